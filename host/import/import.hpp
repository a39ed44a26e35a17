#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "host/import/calendar.hpp"
#include "host/import/summary.hpp"
#include "host/import/tables.hpp"
#include "host/import/trips.hpp"

namespace ravelinox::host {

struct ImportOptions {
  std::filesystem::path feed;  ///< a GTFS feed: a zip file or a folder
  std::string station;         ///< the own station: its name in any letter case, or a stop's id
  std::filesystem::path out;   ///< folder for the databases, made when it is missing
  Window window;               ///< the days to import; without limits all of the feed
  std::size_t on_demand = 0;   ///< how many invented trains on demand to add
  bool force = false;          ///< replace databases that are there already
};

/// Makes a station database and a line database of all trips that call at one station of a public
/// timetable, each with its whole run. `progress` may be empty.
///
/// Throws a Refusal, one sentence for the user, for a feed or an option that cannot be used, and
/// the component's Error for databases that are there already (58) or cannot be written. A
/// failure leaves neither database behind, nor harms one that was there.
void import_feed(const ImportOptions& options, const ImportProgress& progress,
                 ImportSummary& summary);

/// The first half of the import: the feed as trains, numbered and with their tracks. Reads only;
/// the options' paths are of no meaning here.
[[nodiscard]] Timetable read_timetable(const Archive& archive, const ImportOptions& options,
                                       const ImportProgress& progress, ImportSummary& summary);

}  // namespace ravelinox::host
