// Walks the rows of one train on `DLLRSMovimL` and moves them onto the simulated day.
#pragma once

#include <cstdint>

#include "core/clock.hpp"
#include "platform/arithmetic.hpp"
#include "ravelinox/cmdl1.hpp"
#include "timetable/placement.hpp"

namespace ravelinox {

/// The simulated day, as far as the walk of a run needs it.
struct SetUpDay {
  Timestamp start;
  Timestamp midnight;  ///< of the calendar day of `start`

  /// Movements at or before this moment are over: they keep their times.
  [[nodiscard]] Timestamp first_hour() const { return checked_subtract(start, 3600); }
  /// Movements of tomorrow from this moment on lie outside the 24 hours.
  [[nodiscard]] Timestamp last_hour() const { return checked_add(start, one_day - 3660); }
};

/// A train of one of the lists.
struct ListedTrain {
  std::int32_t number = 0;
  Variant length;
};

/// The moment of a stored time's time of day on a day that begins at `midnight`. 94 for Null.
[[nodiscard]] Timestamp on_day(Timestamp midnight, const Variant& stored);

/// The walks of the three lists. Each opens the train's rows, moves and saves them one by one and
/// closes the slot; a train outside the 24 hours keeps its rows. 3021 for a train without rows.
void walk_train_of_today(cmdl1& engine, const SetUpDay& day, const ListedTrain& train);
void walk_train_of_tomorrow(cmdl1& engine, const SetUpDay& day, const ListedTrain& train);
void walk_extraordinary_train(cmdl1& engine, const SetUpDay& day, const ListedTrain& train);

}  // namespace ravelinox
