// Stops become stations: platforms are led back to their station, and stops that only differ in
// their id are joined.
#include "host/import/stations.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <set>
#include <utility>

#include "host/import/csv.hpp"
#include "host/import/names.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

constexpr double same_place_km = 1.0;

struct RawStop {
  std::string name;
  std::string parent;
  std::string platform;
  std::optional<Position> position;
};
using RawStops = std::map<std::string, RawStop>;  // by id, so that the order of rows is no matter

std::optional<double> number(const std::string& text, double limit) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return {};
  return std::abs(value) <= limit ? std::optional(value) : std::nullopt;
}

std::optional<Position> position_of(const FeedTable& row) {
  const auto latitude = number(row["stop_lat"], 90);
  const auto longitude = number(row["stop_lon"], 180);
  if (!latitude || !longitude || (*latitude == 0 && *longitude == 0)) return {};
  return Position{*latitude, *longitude};
}

RawStops read_rows(const Archive& archive) {
  RawStops stops;
  FeedTable row(archive, "stops.txt", {"stop_id", "stop_name"});
  while (row.next()) {
    if (row["stop_id"].empty()) throw Refusal(row.place("stop_id") + ": a stop needs an id.");
    const auto added =
        stops.emplace(row["stop_id"], RawStop{row["stop_name"], row["parent_station"],
                                              clean_name(row["platform_code"]), position_of(row)});
    if (!added.second) {
      throw Refusal(row.place("stop_id") + ": a second stop with this id; each needs its own.");
    }
  }
  return stops;
}

/// The stop at the top of the hierarchy; a parent that is missing or a circle ends the climb.
RawStops::const_iterator top_of(const RawStops& stops, RawStops::const_iterator stop) {
  constexpr int deepest = 8;
  for (int depth = 0; depth < deepest; ++depth) {
    const auto parent = stops.find(stop->second.parent);
    if (parent == stops.end() || parent == stop) break;
    stop = parent;
  }
  return stop;
}

bool same_place(const std::optional<Position>& a, const std::optional<Position>& b) {
  return !a || !b || distance(*a, *b) <= same_place_km;
}

/// Makes one station of a top stop, or finds the one that it belongs to.
class Joiner {
 public:
  explicit Joiner(Stations& result) : result_(result) {}

  std::size_t station(const std::string& id, const RawStop& stop) {
    const auto known = by_id_.find(id);
    if (known != by_id_.end()) return known->second;
    auto name = clean_name(stop.name);
    if (name.empty()) name = clean_name("Stop " + id);
    for (const auto candidate : by_name_[lower_case(name)]) {
      if (same_place(result_.stations[candidate].position, stop.position)) {
        return by_id_[id] = candidate;
      }
    }
    by_name_[lower_case(name)].push_back(result_.stations.size());
    result_.stations.push_back({id, std::move(name), stop.position});
    return by_id_[id] = result_.stations.size() - 1;
  }

 private:
  Stations& result_;
  std::unordered_map<std::string, std::size_t> by_id_;
  std::unordered_map<std::string, std::vector<std::size_t>> by_name_;
};

/// How many letters must change to make a text the beginning of a name.
std::size_t edits(std::string_view text, std::string_view name) {
  std::vector<std::size_t> row(name.size() + 1);
  for (std::size_t j = 0; j <= name.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= text.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i);
    for (std::size_t j = 1; j <= name.size(); ++j) {
      const std::size_t replaced = diagonal + (text[i - 1] == name[j - 1] ? 0 : 1);
      diagonal = std::exchange(row[j], std::min({row[j] + 1, row[j - 1] + 1, replaced}));
    }
  }
  return *std::min_element(row.begin(), row.end());
}

std::string listed(const Stations& stations, const std::vector<std::size_t>& candidates) {
  std::string text;
  for (const auto index : candidates) {
    text += text.empty() ? "" : ", ";
    text += "\"" + stations[index].name + "\" (stop " + stations[index].id + ")";
  }
  return text;
}

/// The stations with the names most like the wanted one, those that contain it first.
std::vector<std::size_t> nearest(const Stations& stations, const std::string& wanted) {
  constexpr std::size_t most = 8;
  std::set<std::pair<std::size_t, std::size_t>> ranked;
  for (const auto& [alias, index] : stations.aliases) {
    const bool contains = !wanted.empty() && alias.find(wanted) != std::string::npos;
    const std::size_t changes = alias.starts_with(wanted) ? 0
                                : contains                ? 1
                                                          : 1 + edits(wanted, alias);
    if (contains || changes <= 1 + wanted.size() / 3) ranked.emplace(changes, index);
  }
  std::vector<std::size_t> result;
  for (const auto& [rank, index] : ranked) {
    if (std::find(result.begin(), result.end(), index) == result.end()) result.push_back(index);
    if (result.size() == most) break;
  }
  return result;
}

std::set<std::size_t> answering(const Stations& stations, const std::string& alias) {
  std::set<std::size_t> result;
  const auto [first, last] = stations.aliases.equal_range(alias);
  for (auto i = first; i != last; ++i) result.insert(i->second);
  return result;
}

}  // namespace

double distance(const Position& a, const Position& b) {
  constexpr double earth_radius_km = 6371.0;
  constexpr double radians = std::numbers::pi / 180;
  const double north = std::sin((b.latitude - a.latitude) * radians / 2);
  const double east = std::sin((b.longitude - a.longitude) * radians / 2);
  const double chord =
      north * north + std::cos(a.latitude * radians) * std::cos(b.latitude * radians) * east * east;
  return 2 * earth_radius_km * std::asin(std::min(1.0, std::sqrt(chord)));
}

Stations read_stations(const Archive& archive) {
  const auto rows = read_rows(archive);
  Stations result;
  Joiner joiner(result);
  for (auto stop = rows.begin(); stop != rows.end(); ++stop) {
    const auto top = top_of(rows, stop);
    const auto station = joiner.station(top->first, top->second);
    result.stops.emplace(stop->first, Stop{station, stop->second.platform});
    result.aliases.emplace(folded(stop->second.name), station);
  }
  return result;
}

std::size_t find_station(const Stations& stations, std::string_view wanted) {
  if (const auto stop = stations.stops.find(std::string(wanted)); stop != stations.stops.end()) {
    return stop->second.station;
  }
  // A name may also be that of another station's platform: a station's own name goes first.
  std::vector<std::size_t> exact;
  const auto name = lower_case(clean_name(wanted));
  for (std::size_t i = 0; i < stations.stations.size(); ++i) {
    if (lower_case(stations[i].name) == name) exact.push_back(i);
  }
  if (exact.empty()) {
    const auto found = answering(stations, folded(wanted));
    exact.assign(found.begin(), found.end());
  }
  if (exact.size() == 1) return exact.front();
  if (!exact.empty()) {
    throw Refusal("Several stations answer to \"" + std::string(wanted) +
                  "\": " + listed(stations, exact) + ". Give the id of the stop instead.");
  }
  const auto candidates = nearest(stations, folded(wanted));
  throw Refusal("The feed has no station \"" + std::string(wanted) + "\"" +
                (candidates.empty() ? std::string(", nor one with a similar name.")
                                    : "; near it: " + listed(stations, candidates) + "."));
}

std::size_t name_apart(Stations& stations, const std::vector<std::size_t>& used) {
  std::set<std::string> taken;
  std::size_t renamed = 0;
  for (const auto index : used) {
    auto& name = stations.stations[index].name;
    const auto plain = name;
    for (int count = 2; !taken.insert(lower_case(name)).second; ++count) {
      name = plain + " (" + std::to_string(count) + ")";
    }
    if (name != plain) ++renamed;
  }
  return renamed;
}

}  // namespace ravelinox::host
