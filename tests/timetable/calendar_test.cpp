#include "timetable/calendar.hpp"

#include <gtest/gtest.h>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

DateTime date(int year, unsigned month, unsigned day) {
  using namespace std::chrono;
  return DateTime(sys_days(std::chrono::year(year) / std::chrono::month(month) / day));
}

TEST(Calendar, EasterMonday) {
  cmdl1 engine;
  for (const auto& [year, code] : Table<std::int16_t, const char*>{
           {2024, "0104"}, {1954, "1904"}, {2038, "2604"}, {2285, "2303"}, {26190, "0504"}}) {
    EXPECT_EQ(engine.EasterMondayDate(year), Variant(code)) << year;
  }
  for (const auto& [year, error] : Table<std::int16_t, ErrorNumber>{
           {26191, ErrorNumber::overflow}, {-4, ErrorNumber::division_by_zero}}) {
    EXPECT_EQ(error_of([&] { return engine.EasterMondayDate(year); }), error) << year;
  }
}

TEST(Calendar, HolidaysAreSundaysEasterMondayAndTenDates) {
  std::string on_weekdays;
  for (auto day = date(2025, 1, 1); day.year() == 2025;
       day = DateTime(day.moment() + std::chrono::days(1))) {
    const CalendarDay today = calendar_day(day);
    EXPECT_TRUE(today.holiday || today.weekday != 0) << today.date_code;
    if (today.holiday && today.weekday != 0) on_weekdays += today.date_code + " ";
  }
  EXPECT_EQ(on_weekdays, "0101 0601 2104 2504 0105 0206 1508 0111 0812 2512 2612 ");
}

TEST(Calendar, DayCodesAdmitDays) {
  const DateTime sunday = date(2026, 4, 19);
  const DateTime wednesday = date(2026, 4, 22);
  const DateTime easter_monday_2026 = date(2026, 4, 6);
  const DateTime christmas_monday = date(2023, 12, 25);
  for (const auto& [code, day, runs] :
       Table<const char*, DateTime, bool>{{" 3 ", wednesday, true},
                                          {" 13 ", wednesday, false},
                                          {" 2204 ", wednesday, true},
                                          {" 1 2 3 4 5 e2204 ", wednesday, false},
                                          {" Fes ", sunday, true},
                                          {" Fes ", wednesday, false},
                                          {" 0 Fes ", easter_monday_2026, false},
                                          {" 1 2 3 4 5 6 eF ", easter_monday_2026, false},
                                          {" 1 2 3 4 5 6 eF ", wednesday, true},
                                          {" 1 2 3 4 5 e2512 ", christmas_monday, false},
                                          {" 1 2 3 4 5 e2512 ", date(2024, 1, 1), true},
                                          {"", sunday, false}}) {
    const Station station("1 R '" + std::string(code) + "'");
    EXPECT_EQ(station.query(train_list_statement("Numero", calendar_day(day))), runs ? "1" : "")
        << "\"" << code << "\" on " << format(day, "d/mm/yyyy");
  }
}

}  // namespace
}  // namespace ravelinox::testing
