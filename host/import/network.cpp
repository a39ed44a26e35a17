// Neighbours and line sections out of runs.
#include "host/import/network.hpp"

#include <algorithm>
#include <cmath>
#include <string>

namespace ravelinox::host {
namespace {

constexpr std::size_t trains_for_two_tracks = 40;
constexpr double usual_km_per_second = 60.0 / 3600;

std::pair<std::size_t, std::size_t> ordered(std::size_t a, std::size_t b) {
  return {std::min(a, b), std::max(a, b)};
}

/// Straight from station to station, to a tenth of a kilometre; from the running time where the
/// feed does not say where they lie.
double length_km(const Station& a, const Station& b, std::int32_t seconds) {
  const double km =
      a.position && b.position ? distance(*a.position, *b.position) : seconds * usual_km_per_second;
  return std::max(0.1, std::round(km * 10) / 10);
}

}  // namespace

Network::Network(const std::vector<Train>& trains, const Stations& stations) {
  for (const auto& train : trains) collect(train);
  for (const auto& train : trains) find_skips(train);
  for (const auto& [pair, hop] : hops_) {
    if (hop.skips) continue;
    const auto [a, b] = pair;
    sections_.push_back({a, b, length_km(stations[a], stations[b], hop.seconds),
                         hop.trains >= trains_for_two_tracks});
    accesses_[a].push_back(b);
    accesses_[b].push_back(a);
  }
  for (auto& [station, neighbours] : accesses_) {
    std::sort(neighbours.begin(), neighbours.end(),
              [&](std::size_t a, std::size_t b) { return stations[a].name < stations[b].name; });
  }
}

void Network::collect(const Train& train) {
  for (std::size_t i = 1; i < train.calls.size(); ++i) {
    const auto& from = train.calls[i - 1];
    const auto& to = train.calls[i];
    const auto seconds = to.arrival - from.departure;
    auto& hop = hops_.try_emplace(ordered(from.station, to.station), Hop{seconds}).first->second;
    hop.seconds = std::min(hop.seconds, seconds);
    ++hop.trains;
  }
}

/// A hop is a skip when this train takes it in several hops, each quicker than the whole: the
/// quickest hops are never skips, so every station keeps a neighbour on the way to any other.
void Network::find_skips(const Train& train) {
  const auto hop = [&](std::size_t i, std::size_t j) {
    return hops_.find(ordered(train.calls[i].station, train.calls[j].station));
  };
  for (std::size_t i = 0; i < train.calls.size(); ++i) {
    std::int32_t slowest = 0;
    for (std::size_t j = i + 1; j < train.calls.size(); ++j) {
      slowest = std::max(slowest, hop(j - 1, j)->second.seconds);
      const auto whole = hop(i, j);
      if (j > i + 1 && whole != hops_.end() && slowest < whole->second.seconds) {
        whole->second.skips = true;
      }
    }
  }
}

}  // namespace ravelinox::host
