#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/import/archive.hpp"
#include "host/import/numbers.hpp"
#include "host/import/runs.hpp"
#include "host/import/stations.hpp"
#include "host/import/summary.hpp"

namespace ravelinox::host {

/// Told now and then on a long import: what is being done, and how many rows it has come to.
using ImportProgress = std::function<void(std::string_view step, std::size_t rows)>;

struct Trip {
  std::string id;
  std::string service;
  const Category* category = nullptr;
  std::string undertaking;
  std::string short_name;
};

/// The trips of a feed: all of its trains by name, for their numbers, and those that call at the
/// own station whole.
struct Trips {
  std::vector<TripName> names;
  std::map<std::string, Trip> calling;  ///< by id
};

/// The ids of all trips with a call at the station. Reads stop_times.txt from end to end.
[[nodiscard]] std::set<std::string> trips_at(const Archive& archive, const Stations& stations,
                                             std::size_t station, const ImportProgress& progress);

/// Reads trips.txt, routes.txt and, where there is one, agency.txt. Trips of trams, buses and
/// ships are left out, and so are those of an unknown route and those without a row here.
[[nodiscard]] Trips read_trips(const Archive& archive, const std::set<std::string>& at,
                               Tally& dropped);

/// Reads the rows of the trips in stop_times.txt. A trip with a row that cannot be understood is
/// taken out of `trips`.
[[nodiscard]] std::map<std::string, std::vector<TimetableRow>> read_rows(
    const Archive& archive, const Stations& stations, Trips& trips, Tally& dropped,
    const ImportProgress& progress);

}  // namespace ravelinox::host
