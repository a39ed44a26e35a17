// Platform tracks by occupancy.
#include "host/import/tracks.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <tuple>

#include "host/import/trains.hpp"

namespace ravelinox::host {
namespace {

constexpr std::int32_t day_seconds = 86'400;
constexpr std::int32_t margin = 120;     // between two trains on one track
constexpr std::int32_t turnround = 600;  // a train stands so long before it starts or after it ends
constexpr std::size_t tracks_by_side = 4;  // so many are opened for a side of their own
constexpr std::size_t most_tracks = 40;

/// A train's time on the track of the own station.
struct Stay {
  Call* call;
  std::size_t side;  ///< the station that it comes from, or goes to where it starts
  std::int32_t from;
  std::int32_t to;
  const DaySet* days;
};

struct Track {
  std::string name;
  std::size_t side = 0;
  bool open_to_any = false;  ///< named by the feed
  std::vector<const Stay*> stays;
};

Stay stay_of(Train& train, std::size_t index) {
  auto& call = train.calls[index];
  const bool starts = index == 0;
  const bool ends = index + 1 == train.calls.size();
  const auto arrival = starts ? call.departure - turnround : call.arrival;
  const auto departure = ends ? call.arrival + turnround : call.departure;
  const auto& neighbour = train.calls[starts ? 1 : index - 1];
  return {&call, neighbour.station, arrival - margin / 2, departure + margin / 2, &train.days};
}

bool meet(const Stay& a, const Stay& b) {
  // Days are those of the starts: a run over midnight may meet one that starts on the next day.
  constexpr std::int32_t days_apart = 5;
  for (std::int32_t apart = -days_apart; apart <= days_apart; ++apart) {
    const auto from = b.from + apart * day_seconds;
    const auto to = b.to + apart * day_seconds;
    if (a.to <= from || to <= a.from) continue;
    const auto shift = static_cast<std::size_t>(std::abs(apart));
    const auto moved = apart > 0 ? *b.days >> shift : *b.days << shift;
    if ((*a.days & moved).any()) return true;
  }
  return false;
}

std::size_t meetings(const Track& track, const Stay& stay) {
  return static_cast<std::size_t>(
      std::count_if(track.stays.begin(), track.stays.end(),
                    [&](const Stay* other) { return meet(*other, stay); }));
}

bool is_free(const Track& track, const Stay& stay) {
  return std::none_of(track.stays.begin(), track.stays.end(),
                      [&](const Stay* other) { return meet(*other, stay); });
}

/// "2" before "10" before "10a" before "A".
bool number_before(const std::string& a, const std::string& b) {
  const auto key = [](const std::string& name) {
    int number = 1'000'000;
    std::from_chars(name.data(), name.data() + name.size(), number);
    return std::tuple(number, name);
  };
  return key(a) < key(b);
}

class OwnStation {
 public:
  explicit OwnStation(std::vector<Stay> stays) : stays_(std::move(stays)) {
    std::sort(stays_.begin(), stays_.end(), [](const Stay& a, const Stay& b) {
      return std::tuple(a.from, a.to) < std::tuple(b.from, b.to);
    });
  }

  void allot(Tally& adapted) {
    for (const auto& stay : stays_) {
      if (!stay.call->track.empty()) named(stay.call->track).stays.push_back(&stay);
    }
    for (const auto& stay : stays_) {
      if (!stay.call->track.empty()) continue;
      auto& track = choose(stay);
      if (!is_free(track, stay)) adapted.add("trains that share their track with another");
      stay.call->track = track.name;
      track.stays.push_back(&stay);
      adapted.add("calls at the own station without a track, allotted by occupancy");
    }
  }

  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& track : tracks_) names.push_back(track.name);
    std::sort(names.begin(), names.end(), number_before);
    return names;
  }

 private:
  Track& named(const std::string& name) {
    for (auto& track : tracks_) {
      if (track.name == name) return track;
    }
    tracks_.push_back({name, 0, true, {}});
    return tracks_.back();
  }

  Track& opened(std::size_t side) {
    for (int number = 1;; ++number) {
      const auto name = std::to_string(number);
      const bool taken = std::any_of(tracks_.begin(), tracks_.end(),
                                     [&](const Track& track) { return track.name == name; });
      if (taken) continue;
      tracks_.push_back({name, side, false, {}});
      return tracks_.back();
    }
  }

  Track* free_track(const Stay& stay, bool of_its_side) {
    for (auto& track : tracks_) {
      const bool fits = !of_its_side || (!track.open_to_any && track.side == stay.side);
      if (fits && is_free(track, stay)) return &track;
    }
    return nullptr;
  }

  /// A free track of its side; a new one for a new side; any free one; a new one; the one with
  /// the fewest other trains at the time.
  Track& choose(const Stay& stay) {
    if (auto* track = free_track(stay, true)) return *track;
    const bool new_side = std::none_of(tracks_.begin(), tracks_.end(), [&](const Track& track) {
      return track.open_to_any || track.side == stay.side;
    });
    if (new_side && tracks_.size() < tracks_by_side) return opened(stay.side);
    if (auto* track = free_track(stay, false)) return *track;
    if (tracks_.size() < most_tracks) return opened(stay.side);
    return *std::min_element(tracks_.begin(), tracks_.end(), [&](const Track& a, const Track& b) {
      return meetings(a, stay) < meetings(b, stay);
    });
  }

  std::vector<Stay> stays_;
  std::vector<Track> tracks_;
};

/// One track for each direction of travel.
void allot_elsewhere(Train& train) {
  for (std::size_t i = 0; i < train.calls.size(); ++i) {
    if (!train.calls[i].track.empty()) continue;
    const bool last = i + 1 == train.calls.size();
    const auto from = train.calls[last ? i - 1 : i].station;
    const auto to = train.calls[last ? i : i + 1].station;
    train.calls[i].track = from < to ? "1" : "2";
  }
}

}  // namespace

std::vector<std::string> allot_tracks(std::vector<Train>& trains, std::size_t station,
                                      Tally& adapted) {
  std::vector<Stay> stays;
  for (auto& train : trains) {
    for (std::size_t i = 0; i < train.calls.size(); ++i) {
      if (train.calls[i].station == station) stays.push_back(stay_of(train, i));
    }
  }
  OwnStation own(std::move(stays));
  own.allot(adapted);
  for (auto& train : trains) allot_elsewhere(train);
  return own.names();
}

}  // namespace ravelinox::host
