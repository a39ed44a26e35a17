// Day codes say exactly what the calendar says.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "host/import/calendar.hpp"
#include "host/import/day_code.hpp"
#include "text_feed.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

Day day(const char* text) { return parse_day(text).value(); }

// When a day code lets a train run, told again from the rule and not from the code that writes it.

std::string date_of(Day day) {
  const auto text = show_day(day);  // 2026-04-22
  return text.substr(8, 2) + text.substr(5, 2);
}

bool is_holiday(Day day) {
  static const std::set<std::string> fixed = {"0101", "0601", "2504", "0105", "0206",
                                              "1508", "0111", "0812", "2512", "2612"};
  static const std::set<std::string> easter_mondays = {"2024-04-01", "2026-04-06", "2028-04-17"};
  return std::chrono::weekday(day) == std::chrono::Sunday || fixed.contains(date_of(day)) ||
         easter_mondays.contains(show_day(day));
}

bool admits(const std::string& code, Day day) {
  const auto has = [&](const std::string& token) {
    return code.find(" " + token + " ") != std::string::npos;
  };
  const auto weekday = std::to_string(std::chrono::weekday(day).c_encoding());
  const bool named = has(weekday) || has(date_of(day));
  if (has("e" + date_of(day))) return false;
  return is_holiday(day) ? (named || code == " Fes ") && !has("eF") : named;
}

TEST(DayCode, LosesNoDayOfAYear) {
  std::mt19937 random(7);
  for (const char* start : {"20260115", "20231203", "20280229"}) {
    const Day first = day(start);
    const DayCodes codes(first, 365);
    for (int round = 0; round < 40; ++round) {
      // From nearly never to nearly always, and more so on some weekdays; now and then on
      // holidays alone, or on all days but them.
      std::array<std::mt19937::result_type, 7> chance{};
      for (auto& share : chance) share = random() % 101;
      DaySet days;
      for (std::size_t i = 0; i < 365; ++i) {
        const Day each = first + std::chrono::days(i);
        days[i] = round < 2 ? is_holiday(each) == (round == 0)
                            : random() % 100 < chance[std::chrono::weekday(each).c_encoding()];
      }
      const auto code = codes.code(days, 0, 364);
      for (std::size_t i = 0; i < 365; ++i) {
        ASSERT_EQ(admits(code, first + std::chrono::days(i)), days[i]) << code << " day " << i;
      }
    }
  }
}

Calendar read(const std::string& weeks, const std::string& dates, const Window& window = {}) {
  std::map<std::string, std::string> files;
  if (!weeks.empty()) {
    files["calendar.txt"] =
        "service_id,monday,tuesday,wednesday,thursday,friday,saturday,sunday,"
        "start_date,end_date\n" +
        weeks;
  }
  if (!dates.empty()) files["calendar_dates.txt"] = "date,exception_type,service_id\n" + dates;
  return read_calendar(TextFeed(files), {"s"}, window);
}

TEST(Calendar, JoinsWeeksAndExceptionsWithinTheWindow) {
  const std::string weeks = "s,1,0,0,0,0,0,0,20200101,20991231\nother,1,1,1,1,1,1,1,2020,x\n";
  const std::string dates =
      "20260413,2,s\n20260430,1,s\n20260501,1,s\n20260411,1,s\n20260415,1,other\n";
  const auto calendar = read(weeks, dates, {day("20260412"), day("20260430")});
  EXPECT_EQ(show_day(calendar.first) + show_day(calendar.last), "2026-04-202026-04-30");
  EXPECT_EQ(calendar.days("s").count(), 3U);  // 20, 27 and 30 April
  EXPECT_TRUE(calendar.days("other").none());
}

TEST(Calendar, RefusesWhatItCannotKeep) {
  for (const auto& [weeks, dates, part] : Table<const char*, const char*, const char*>{
           {"", "", "neither"},
           {"", "20260101,1,other\n", "any day"},
           {"", "20260230,1,s\n", "line 2, date \"20260230\""},
           {"s,1,0,0,0,0,0,2,20260101,20260201\n", "", "sunday \"2\""},
           {"s,1,0,0,0,0,0,0,20260201,20260101\n", "", "before the start"},
           {"", "20280229,1,s\n20290301,1,s\n", "--to 2029-02-28"},
           {"s,1,1,1,1,1,1,1,20260101,20991231\n", "", "a year at most"}}) {
    const std::string refusal = refusal_of([&] { return read(weeks, dates); });
    EXPECT_NE(refusal.find(part), std::string::npos) << weeks << dates << refusal;
  }
  EXPECT_NO_THROW((void)read("", "20280229,1,s\n20290228,1,s\n"));
}

}  // namespace
}  // namespace ravelinox::host
