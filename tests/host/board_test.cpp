#include "host/board.hpp"

#include <gtest/gtest.h>

#include "host/calls.hpp"
#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

std::string trains_of(const std::vector<BoardRow>& rows) {
  std::string text;
  for (const BoardRow& row : rows) {
    text += std::to_string(row.train) + (row.at_platform ? "* " : " ");
  }
  return text;
}

TEST(Board, ShowsWhoComesStandsOrIsLate) {
  for (const auto& [what, stops, arrivals, departures] :
       Table<const char*, BoardCall, const char*, const char*>{
           {"at the platform", call(1, -1, 2), "1* ", "1* "},
           {"leaving this second", call(1, -5, 0), "", ""},
           {"late", call(1, -20, -18, 30), "1 ", "1 "},
           {"late at the platform", call(1, -20, -8, 15), "1* ", "1* "},
           {"starts here", call(1, none, 3), "", "1 "},
           {"ends here", call(1, 3, none), "1 ", ""},
           {"just ended here", call(1, -4, none), "1* ", ""},
           {"ended here before", call(1, -5, none), "", ""},
           {"passes", call(1, 3, 3), "", ""},
           {"arrives within the hours, leaves later", call(1, 119, 122), "1 ", ""}}) {
    const Board board = sort_calls({stops}, now, 2 * hour, by_expectation(now));
    EXPECT_EQ(trains_of(board.arrivals), arrivals) << what;
    EXPECT_EQ(trains_of(board.departures), departures) << what;
  }
}

TEST(Board, FollowsWhatWasRecordedBeforeWhatWasExpected) {
  // Expected gone by now, but nobody has reported it yet.
  const Happened nothing = [](const BoardCall&, Event) { return false; };
  const Board board = sort_calls({call(1, -3, -1), call(2, none, -1)}, now, 2 * hour, nothing);
  EXPECT_EQ(trains_of(board.arrivals), "1 ");
  EXPECT_EQ(trains_of(board.departures), "1 2 ");
}

TEST(Board, SortsByExpectedTimeAndCountsTheDwell) {
  BoardCall late = call(1, -2, 1);
  // After an arrival 10 minutes late the row may still expect the timetable's departure.
  late.stop.expected_arrival = now + 8 * minute;
  const Board board =
      sort_calls({late, call(2, 5, 6), call(3, none, 6)}, now, 2 * hour, by_expectation(now));
  EXPECT_EQ(trains_of(board.departures), "2 3 1 ");
  EXPECT_EQ(board.departures.back().expected, now + 8 * minute + 30);
  EXPECT_EQ(board.departures.back().delay_minutes(), 7);
}

TEST(Board, RoundsDelaysDown) {
  for (const auto& [seconds, minutes] :
       Table<Timestamp, std::int32_t>{{0, 0}, {59, 0}, {60, 1}, {-1, -1}, {-60, -1}, {-61, -2}}) {
    BoardRow row;
    row.expected = seconds;
    EXPECT_EQ(row.delay_minutes(), minutes) << seconds;
  }
}

}  // namespace
}  // namespace ravelinox::host
