#include "timetable/expected_times.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"
#include "support/scripted_random.hpp"
#include "timetable/max.hpp"

namespace ravelinox::testing {
namespace {

using Draws = std::vector<float>;

constexpr Timestamp t = 36000;

RowTimes times(Variant arrival, Variant departure, Variant expected_arrival) {
  return {std::move(arrival), std::move(departure), std::move(expected_arrival), 30, 60};
}

TEST(ExpectedTimes, ArrivalOfTodayCarriesTheDelayAndNeverPrecedesTheLastDeparture) {
  for (const auto& [what, draws, spread, running, expected] :
       Table<const char*, Draws, std::int16_t, RunningDelay, Timestamp>{
           {"later minus earlier draw", {0.999F, 0.25F, 0}, 100, {}, t + 99 - 25},
           {"the delay carries, less its recovery", {0, 0, 0.5F}, 0, {300, 0}, t + 300 - 30},
           {"as early as the last departure", {0, 0, 0}, 0, {0, t}, t},
           {"earlier than the last departure", {0, 0, 0.5F}, 0, {10, t + 1}, t + 10 - 60}}) {
    ScriptedRandom random(draws);
    EXPECT_EQ(expected_arrival_today(random, spread, running, t, times(t, t + 60, Variant())),
              expected)
        << what;
    EXPECT_EQ(random.draws, 3U) << what;
  }
}

TEST(ExpectedTimes, DepartureOfTodayKeepsDwellAndTime) {
  // Each with a running delay of 7 seconds, which an origin wins back.
  const RowTimes origin = times(Variant::null(), t, Variant::null());
  const RowTimes late_stop = times(t - 60, t, t + 200);
  const RowTimes early_stop = times(t - 60, t, t - 100);
  const RowTimes no_stop = times(Variant::null(), t, t - 100);  // though in the run's middle
  for (const auto& [what, draws, row, expected] : Table<const char*, Draws, RowTimes, Timestamp>{
           {"origin, all that counts", {0.75F, 0.25F, 0.5F, 0}, origin, t + 75 - 25 - 30 - 7},
           {"origin, at most a minute early", {0, 0.9F, 0, 0.999F}, origin, t - 60},
           {"dwell after a late arrival", {0, 0, 0, 0}, late_stop, t + 230},
           {"not before its time less the draw", {0, 0, 0.999F, 0.5F}, early_stop, t - 30},
           {"pass, early as it comes", {0, 0, 0.999F}, times(t, t, t - 200), t + 7 - 59},
           {"no stop", {0, 0, 0}, no_stop, t + 7}}) {
    ScriptedRandom random(draws);
    EXPECT_EQ(expected_departure_today(random, 100, {7, 0}, t, row), expected) << what;
    EXPECT_EQ(random.draws, draws.size()) << what;
  }
}

TEST(ExpectedTimes, TomorrowsAndExtraordinaryTrainsLeanToLateness) {
  ScriptedRandom random({0, 0.999F});
  EXPECT_EQ(expected_arrival(random, 100, t), t - 49);
  const Variant none = Variant::null();
  for (const auto& [what, draws, row, expected, drawn] :
       Table<const char*, Draws, RowTimes, Timestamp, std::size_t>{
           {"origin", {0, 0.999F, 0.5F}, times(none, t, none), t - 30, 3},
           {"stop", {0, 0, 0.5F}, times(t - 60, t, t + 100), t + 130, 3},
           {"pass", {0, 0.999F}, times(t, t, t - 100), t - 49, 2}}) {
    random = ScriptedRandom(draws);
    EXPECT_EQ(expected_departure(random, 100, t, row), expected) << what;
    EXPECT_EQ(random.draws, drawn) << what;
  }
}

TEST(Max, ComparesRoundedNumbersAndKeepsTheKind) {
  EXPECT_EQ(mdl1::Max(7, std::int16_t{7}), Variant(std::int16_t{7}));
  EXPECT_EQ(mdl1::Max(8.5, 8), Variant(8));  // 8.5 rounds to 8, which is not greater
  EXPECT_EQ(mdl1::Max(9.5, 9), Variant(9.5));
  EXPECT_EQ(error_of([] { return mdl1::Max(3e9, 1); }), ErrorNumber::overflow);
}

}  // namespace
}  // namespace ravelinox::testing
