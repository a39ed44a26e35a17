#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/import/summary.hpp"
#include "host/import/timetable.hpp"

namespace ravelinox::host {

/// A row of stop_times.txt, its times in seconds from midnight of the day of service.
struct TimetableRow {
  std::int32_t sequence = 0;
  std::size_t station = 0;
  std::optional<std::int32_t> arrival;
  std::optional<std::int32_t> departure;
  bool nobody_boards_or_alights = false;
  std::string platform;
};

/// A trip that no train can be made of, and why. It costs the trip, not the import.
class UnusableTrip : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads "7:05:00" or "25:10:00"; nothing when it is no time.
[[nodiscard]] std::optional<std::int32_t> parse_time(std::string_view text);

/// Makes the runs of a trip: one, or several where it comes back to a station, since a train has
/// one row for each station.
///
///   rows out of order           sorted by their sequence
///   an inner time left blank    in equal steps between the times around it
///   the same station again      the two calls become one
///   a station visited before    the train ends one station earlier and another goes on from there
///   a stop of no length         gets up to 30 seconds, unless nobody boards or alights: a pass
///   the next stop at once       a second later, for arrivals put the stations in order
///
/// Throws UnusableTrip for a trip that calls at one station only, without a first or last time,
/// with times that run back, or longer than five days.
[[nodiscard]] std::vector<std::vector<Call>> make_runs(std::vector<TimetableRow> rows,
                                                       Tally& adapted, std::string_view trip);

/// Counts the times of a run from midnight of the day on which it starts, and returns how many
/// days that lies after the day of service.
[[nodiscard]] std::size_t move_to_first_day(std::vector<Call>& calls);

}  // namespace ravelinox::host
