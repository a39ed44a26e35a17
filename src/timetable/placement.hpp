// Trains that stand at the own station at the start, or are about to leave from it.
#pragma once

#include <cstdint>

#include "core/clock.hpp"
#include "ravelinox/cmdl1.hpp"
#include "timetable/expected_times.hpp"

namespace ravelinox {

/// A row of a run, as the placement looks at it.
struct PlacedRow {
  std::int32_t train = 0;
  Variant scheduled_arrival;
  Variant scheduled_departure;
  Variant expected_arrival;
  Variant expected_departure;
  Variant platform_track;
};

enum class TrainList : std::uint8_t { today, extraordinary };

/// Whether the row is a stop with the start between its expected times.
[[nodiscard]] bool stands_at_start(const PlacedRow& row, Timestamp start);

/// Whether the row is an origin with the expected departure inside the first hour.
[[nodiscard]] bool leaves_soon(const PlacedRow& row, Timestamp start);

/// Places the train when a row at the own station says so: speed 0, position and state. A train
/// about to leave is placed only when nobody else is expected on its track before. Uses `DLLRS`
/// and `DLLRS4`; fails as the cells and the choice of a stabling track do (3021 when there is
/// none).
void place_train(cmdl1& engine, const PlacedRow& row, TrainList list, const Variant& train_length,
                 Timestamp start);

}  // namespace ravelinox
