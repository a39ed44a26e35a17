// Rows of a timetable as runs: one line of text for a case, what becomes of it beside it.
#include <gtest/gtest.h>

#include <sstream>

#include "host/import/runs.hpp"
#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

/// "A 8:00/8:01" is a call at station A; "-" is a blank time, a "p" behind it one where nobody
/// boards or alights, and a number before the station its sequence instead of its place.
std::vector<TimetableRow> rows_of(const std::string& text) {
  std::vector<TimetableRow> rows;
  std::istringstream words(text);
  for (std::string station, times; words >> station >> times;) {
    TimetableRow row;
    row.sequence = station.size() > 1 ? std::stoi(station) : static_cast<std::int32_t>(rows.size());
    row.station = static_cast<std::size_t>(station.back() - 'A');
    row.nobody_boards_or_alights = times.back() == 'p';
    if (row.nobody_boards_or_alights) times.pop_back();
    const auto slash = times.find('/');
    row.arrival = parse_time(times.substr(0, slash) + ":00");
    row.departure = parse_time(times.substr(slash + 1) + ":00");
    rows.push_back(row);
  }
  return rows;
}

std::string shown(std::int32_t seconds) {
  std::string text = std::to_string(seconds / 3600) + ":";
  text += std::to_string(seconds / 600 % 6) + std::to_string(seconds / 60 % 10);
  return seconds % 60 == 0 ? text : text + "+" + std::to_string(seconds % 60);
}

/// The runs in the form of the rows, or why there are none.
std::string result(const std::string& rows) {
  Tally adapted;
  std::string text;
  try {
    for (const auto& run : make_runs(rows_of(rows), adapted, "x")) {
      text += text.empty() ? "" : ";";
      for (const auto& call : run) {
        text += text.empty() ? "" : " ";
        text += static_cast<char>('A' + call.station);
        text += " " + shown(call.arrival) + "/" + shown(call.departure) + (call.passes ? "p" : "");
      }
    }
  } catch (const UnusableTrip& unusable) {
    return unusable.what();
  }
  return text;
}

TEST(Runs, ComeOutAsTheEngineNeedsThem) {
  const Table<const char*, const char*> cases{
      {"9C 8:20/8:20 1A 8:00/8:00 5B 8:10/8:12", "A 8:00/8:00 B 8:10/8:12 C 8:20/8:20"},
      // The ends of a run have one time, whatever the feed says.
      {"A 7:50/8:00 B 8:10/8:30", "A 8:00/8:00 B 8:10/8:10"},
      // Blank times lie in equal steps between the others.
      {"A 8:00/8:00 B -/- C -/- D 8:30/8:30",
       "A 8:00/8:00 B 8:10/8:10+30 C 8:20/8:20+30 D 8:30/8:30"},
      {"A 8:00/8:00 B -/8:10 C 8:20/-", "A 8:00/8:00 B 8:10/8:10+30 C 8:20/8:20"},
      // A stop of no length gets a dwell, a pass none; a pass that stands stays a stop.
      {"A 8:00/8:00 B 8:10/8:12p C 8:20/8:20", "A 8:00/8:00 B 8:10/8:12 C 8:20/8:20"},
      // Stations within one minute: arrivals still rise, stops take half the room that is left,
      // and the published times are kept.
      {"A 8:00/8:00 B 8:00/8:00 C 8:00/8:00 D 8:01/8:01",
       "A 8:00/8:00 B 8:00+1/8:00+2 C 8:00+3/8:00+31 D 8:01/8:01"},
      // The same station twice in a row is one call.
      {"A 8:00/8:00 B 8:10/8:12 B 8:15/8:17 C 8:20/8:20", "A 8:00/8:00 B 8:10/8:17 C 8:20/8:20"},
      {"A 8:00/8:00 A 8:05/8:06 B 8:10/8:10", "A 8:06/8:06 B 8:10/8:10"},
      // A station visited before starts another train, one station earlier.
      {"A 8:00/8:00 B 8:10/8:12 C 8:20/8:22 B 8:30/8:32 D 8:40/8:40",
       "A 8:00/8:00 B 8:10/8:12 C 8:20/8:20; C 8:22/8:22 B 8:30/8:32 D 8:40/8:40"},
      {"A 8:00/8:00 B 8:10/8:12 A 8:20/8:22 B 8:30/8:30",
       "A 8:00/8:00 B 8:10/8:10; B 8:12/8:12 A 8:20/8:20; A 8:22/8:22 B 8:30/8:30"}};
  for (const auto& [rows, run] : cases) EXPECT_EQ(result(rows), run) << rows;
}

TEST(Runs, ThatNoTrainCanFollowAreNamed) {
  for (const auto& [rows, reason] : Table<const char*, const char*>{
           {"", "no call at all"},
           {"A 8:00/8:00", "calls at one station only"},
           {"1A 8:00/8:00 1B 8:10/8:10", "two calls with the same stop_sequence"},
           {"A 8:10/8:10 B -/-", "no time at the first or the last call"},
           {"A 8:00/8:00 B 7:50/8:10 C 8:20/8:20", "times that run back on the way"},
           {"A 8:00/8:00 B 8:12/8:10 C 8:20/8:20", "a departure before the arrival"},
           {"A 8:00/8:00 B 200:00/200:00", "a run beyond five days"}}) {
    EXPECT_EQ(result(rows), reason) << rows;
  }
}

TEST(Runs, TimesAreReadStrictly) {
  for (const auto& [text, seconds] : Table<const char*, std::int32_t>{
           {"7:05:09", 25'509}, {"07:05:09", 25'509}, {"25:10:00", 90'600}, {"0:00:00", 0}}) {
    EXPECT_EQ(parse_time(text), seconds) << text;
  }
  for (const char* text :
       {"7:05", "7:60:00", "7:05:60", "-1:00:00", "7:05:09x", "", "::", "99999999999:00:00"}) {
    EXPECT_EQ(parse_time(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace ravelinox::host
