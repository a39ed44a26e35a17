#include "timetable/expected_times.hpp"

#include <cmath>

#include "core/cells.hpp"
#include "platform/random.hpp"
#include "timetable/max.hpp"

namespace ravelinox {

namespace {

constexpr int most_seconds_early = 61;  // a draw below it: at most 60 seconds before the time

/// The difference of two draws, with its peak at 0.
double even_deviation(RandomSource& random, std::int16_t spread) {
  const double later = draw_below(random, spread);
  return later - draw_below(random, spread);
}

/// A deviation that leans to lateness: the second draw counts half.
double late_deviation(RandomSource& random, std::int16_t spread) {
  const double later = draw_below(random, spread);
  return later - draw_below(random, spread / 2.0);
}

/// A train that stops is not let go more than a minute before its time.
double earliest_departure(RandomSource& random, Timestamp scheduled) {
  return scheduled - draw_below(random, most_seconds_early);
}

double earliest_by_dwell(const RowTimes& row) {
  return to_float64(row.expected_arrival) + to_float64(row.dwell);
}

/// Whether both scheduled times are known and differ; a pass has equal ones.
bool stops(const RowTimes& row) {
  return present(row.scheduled_arrival) && present(row.scheduled_departure) &&
         to_float64(row.scheduled_arrival) != to_float64(row.scheduled_departure);
}

Timestamp later_of(double a, double b) { return to_int32(mdl1::Max(a, b)); }

/// At an inner row the dwell must pass first; where the train stops, its time must be near too.
Timestamp departure_of_stop(RandomSource& random, double wanted, Timestamp scheduled,
                            const RowTimes& row) {
  const Timestamp expected = later_of(wanted, earliest_by_dwell(row));
  return stops(row) ? later_of(earliest_departure(random, scheduled), expected) : expected;
}

}  // namespace

Timestamp expected_arrival_today(RandomSource& random, std::int16_t spread,
                                 const RunningDelay& running, Timestamp scheduled,
                                 const RowTimes& row) {
  const double deviated = scheduled + even_deviation(random, spread);
  const double recovery = to_float64(row.recovery);
  const Timestamp expected = to_int32(running.delay + deviated - draw_below(random, recovery));
  if (expected >= running.expected_departure) return expected;
  return to_int32(static_cast<double>(scheduled) + running.delay - recovery);
}

Timestamp expected_departure_today(RandomSource& random, std::int16_t spread,
                                   const RunningDelay& running, Timestamp scheduled,
                                   const RowTimes& row) {
  const double deviated = scheduled + even_deviation(random, spread);
  const double recovery = to_float64(row.recovery);
  if (!present(row.expected_arrival)) {
    // The origin: nothing holds the train but its time.
    const double recovered =
        std::floor(static_cast<double>(random.draw()) * recovery + running.delay);
    return later_of(deviated - recovered, earliest_departure(random, scheduled));
  }
  const double recovered = draw_below(random, recovery);
  return departure_of_stop(random, running.delay + deviated - recovered, scheduled, row);
}

Timestamp expected_arrival(RandomSource& random, std::int16_t spread, Timestamp scheduled) {
  return to_int32(scheduled + late_deviation(random, spread));
}

Timestamp expected_departure(RandomSource& random, std::int16_t spread, Timestamp scheduled,
                             const RowTimes& row) {
  const double deviated = scheduled + late_deviation(random, spread);
  if (!present(row.expected_arrival)) {
    return later_of(deviated, earliest_departure(random, scheduled));
  }
  return departure_of_stop(random, deviated, scheduled, row);
}

}  // namespace ravelinox
