#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/import/archive.hpp"

namespace ravelinox::host {

struct Position {
  double latitude = 0;
  double longitude = 0;
};

/// The distance along the ground, in kilometres.
[[nodiscard]] double distance(const Position& a, const Position& b);

/// A place where trains call. Platforms belong to their station.
struct Station {
  std::string id;    ///< the feed's, of the stop at the top of the hierarchy
  std::string name;  ///< clean; unique once `name_apart` has run
  std::optional<Position> position;
};

struct Stop {
  std::size_t station = 0;
  std::string platform;  ///< clean; empty where the feed names none
};

/// All stations of a feed, and the stops that belong to them.
struct Stations {
  std::vector<Station> stations;
  std::unordered_map<std::string, Stop> stops;
  /// Names that a station answers to: its own and those of its platforms, folded.
  std::multimap<std::string, std::size_t> aliases;

  [[nodiscard]] const Station& operator[](std::size_t index) const { return stations[index]; }
};

/// Reads stops.txt. Stops of the same name within a kilometre of each other are one station.
[[nodiscard]] Stations read_stations(const Archive& archive);

/// The station that a person means by a name or by a stop's id. Refuses a name that none or
/// several answer to, with the nearest candidates.
[[nodiscard]] std::size_t find_station(const Stations& stations, std::string_view wanted);

/// Gives stations at different places that share a name a number: "Halle", "Halle (2)". The one
/// with the smallest id keeps the name. Returns how many were renamed.
std::size_t name_apart(Stations& stations, const std::vector<std::size_t>& used);

}  // namespace ravelinox::host
