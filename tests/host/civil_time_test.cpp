#include "host/civil_time.hpp"

#include <gtest/gtest.h>

#include "host/refusal.hpp"
#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

TEST(CivilTime, ReadsWhatPeopleType) {
  for (const auto& [text, moment] :
       Table<const char*, Timestamp>{{"1970-01-01", 0},
                                     {"1969-12-31 23:59:59", -1},
                                     {"2024-02-29T12:00", 1709208000},
                                     {"2026-06-10 06:30:15", 1781073015},
                                     {"2038-01-19 03:14:07", 2147483647},
                                     {"1901-12-13 20:45:52", -2147483647 - 1}}) {
    EXPECT_EQ(parse_moment(text), moment) << text;
  }
  for (const char* text :
       {"", "2026", "2026-6-10", "2025-02-29", "2026-13-01", "2026-06-10 24:00", "2026-06-10 06:60",
        "2026-06-10 06:30:60", "2026-06-10 6:30", "2026-06-10 06:30 ", "-026-06-10",
        "2026-06-10 -6:30", "2038-01-19 03:14:08", "1901-12-13 20:45:51", "9999-12-31"}) {
    EXPECT_THROW(static_cast<void>(parse_moment(text)), Refusal) << text;
  }
}

TEST(CivilTime, TimeOfDayIsTheNextOne) {
  const Timestamp start = parse_moment("2026-06-10 06:30");
  for (const auto& [text, moment] :
       Table<const char*, const char*>{{"06:31", "2026-06-10 06:31"},
                                       {"06:30", "2026-06-11 06:30"},
                                       {"2026-06-12 01:00", "2026-06-12 01:00"}}) {
    EXPECT_EQ(parse_moment_after(text, start), parse_moment(moment)) << text;
  }
}

TEST(CivilTime, DaysBeginAtMidnightBefore1970Too) {
  EXPECT_EQ(midnight_of(-1), -day);
  EXPECT_EQ(midnight_of(day + 5), day);
  EXPECT_EQ(show_moment(-1), "Wed 1969-12-31 23:59:59");
  EXPECT_EQ(show_time(9 * hour + 5 * minute), "09:05");
}

}  // namespace
}  // namespace ravelinox::host
