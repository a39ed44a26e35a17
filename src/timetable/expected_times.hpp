// The rules that turn a scheduled time into an expected one. Each takes the random source and the
// row's values and gives the expected time; draws are taken in the order of the rules.
#pragma once

#include <cstdint>

#include "core/clock.hpp"
#include "ravelinox/platform.hpp"

namespace ravelinox {

/// The values of a row that the rules use. Cells stay variants: one that is Null or no number
/// fails only where its value is needed.
struct RowTimes {
  Variant scheduled_arrival;
  Variant scheduled_departure;
  Variant expected_arrival;
  Variant dwell;     ///< least time between arrival and departure, seconds
  Variant recovery;  ///< delay that can be won back on the way here, seconds
};

/// How late a train of today is while its run is walked; its delay carries from row to row.
struct RunningDelay {
  std::int32_t delay = 0;            ///< expected minus scheduled time of the last placed movement
  Timestamp expected_departure = 0;  ///< the last one written
};

/// `spread` is the width G of the random deviation, in seconds; `scheduled` the time of the
/// movement on the simulated day, which `row` holds already.
[[nodiscard]] Timestamp expected_arrival_today(RandomSource& random, std::int16_t spread,
                                               const RunningDelay& running, Timestamp scheduled,
                                               const RowTimes& row);
[[nodiscard]] Timestamp expected_departure_today(RandomSource& random, std::int16_t spread,
                                                 const RunningDelay& running, Timestamp scheduled,
                                                 const RowTimes& row);

/// The same for trains of tomorrow and extraordinary ones, which carry no delay.
[[nodiscard]] Timestamp expected_arrival(RandomSource& random, std::int16_t spread,
                                         Timestamp scheduled);
[[nodiscard]] Timestamp expected_departure(RandomSource& random, std::int16_t spread,
                                           Timestamp scheduled, const RowTimes& row);

}  // namespace ravelinox
