#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/import/network.hpp"
#include "host/import/stations.hpp"
#include "host/import/timetable.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox::host {

/// Rows for the tables of a database, each with its table's name, in the order of its columns.
using Rows = std::vector<std::pair<std::string_view, std::vector<Variant>>>;

/// All that an import knows once the feed is read.
struct Timetable {
  Stations stations;
  std::size_t own = 0;  ///< the own station
  std::vector<std::string> tracks;
  std::vector<Train> trains;
  Calendar calendar;
  std::string source;  ///< who published the feed
};

/// The trains and their rows. Times lie in the second day of the stored week, at and after the
/// time of day at which the train starts.
[[nodiscard]] Rows train_rows(const Timetable& timetable);

/// The accesses of all stations and the line sections between them.
[[nodiscard]] Rows line_rows(const Timetable& timetable, const Network& network);

/// The own station: its properties, a plausible plan of points, signals and track circuits for
/// its platform tracks and accesses, and the routes through it.
[[nodiscard]] Rows station_rows(const Timetable& timetable, const Network& network,
                                const std::string& line_database);

}  // namespace ravelinox::host
