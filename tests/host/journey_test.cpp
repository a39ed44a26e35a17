#include "host/journey.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

/// Alba 100 → Borgo 200/260 → Cima 300 (passing) → Dosso 400, running `late` seconds late.
Run run_late_by(Timestamp late) {
  return {2345,
          {{"Alba", {}, 100, {}, 100 + late, 30, "1"},
           {"Borgo", 200, 260, 200 + late, 260 + late, 30, "2"},
           {"Cima", 300, 300, 300 + late, 300 + late, 0, ""},
           {"Dosso", 400, {}, 400 + late, {}, 30, "1"}}};
}

std::string next_of(const Journey& journey) {
  if (journey.finished()) return "end";
  return std::string(event_word(journey.event())) + " " + journey.stop().station;
}

TEST(Journey, BeginsAfterWhatTheStartHasLeftBehind) {
  for (const auto& [start, next] : Table<Timestamp, const char*>{{50, "Partenza Alba"},
                                                                 {109, "Partenza Alba"},
                                                                 {110, "Arrivo Borgo"},
                                                                 {210, "Partenza Borgo"},
                                                                 {309, "Arrivo Cima"},
                                                                 {310, "Arrivo Dosso"},
                                                                 {410, "end"}}) {
    EXPECT_EQ(next_of(Journey(run_late_by(10), start)), next) << start;
  }
}

TEST(Journey, NeverRunsFasterThanATrainCan) {
  Journey journey(run_late_by(0), 50);
  EXPECT_EQ(journey.real_time(-500), 50);  // not before the start
  journey.advance(170, journey.stops());
  EXPECT_EQ(journey.real_time(-500), 220);  // half of the 100 s from Alba
  journey.advance(240, journey.stops());
  EXPECT_EQ(journey.real_time(-500), 270);  // the dwell of 30 s
}

TEST(Journey, ADelayIsNotCarriedTwice) {
  Journey journey(run_late_by(600), 750);
  EXPECT_EQ(journey.correction(), 0);  // arrivals need none
  std::vector<RunStop> recorded = journey.stops();
  recorded[1].expected_arrival = 805;    // 5 s after it was expected, so the component makes
  recorded[1].expected_departure = 265;  // the departure the timetable's and 5 s
  journey.advance(805, recorded);
  // The train leaves 605 s late, as it would have without the recording; the component would move
  // Cima by 600 s too much.
  EXPECT_EQ(journey.real_time(0), 865);
  EXPECT_EQ(journey.correction(), -600);
}

TEST(Journey, EndsWhenItsRowsAreGone) {
  Journey journey(run_late_by(0), 0);
  journey.advance(100, {});
  EXPECT_TRUE(journey.finished());
}

}  // namespace
}  // namespace ravelinox::host
