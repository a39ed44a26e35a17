#include "timetable/calendar.hpp"

#include <algorithm>
#include <array>
#include <chrono>

#include "platform/arithmetic.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

constexpr std::array<std::string_view, 10> fixed_holidays{"0101", "0601", "2504", "0105", "0206",
                                                          "1508", "0111", "0812", "2512", "2612"};

std::string two_digits(int value) { return (value < 10 ? "0" : "") + std::to_string(value); }

/// A whole number of 16 bits whose every operation is checked.
class Int16 {
 public:
  constexpr Int16(int value)  // NOLINT(*-explicit-*): so that the formulas read as formulas
      : value_(checked<std::int16_t>(value)) {}
  [[nodiscard]] constexpr int value() const { return value_; }

  friend constexpr Int16 operator+(Int16 a, Int16 b) { return a.value() + b.value(); }
  friend constexpr Int16 operator-(Int16 a, Int16 b) { return a.value() - b.value(); }
  friend constexpr Int16 operator*(Int16 a, Int16 b) { return a.value() * b.value(); }
  friend constexpr Int16 operator/(Int16 a, Int16 b) { return a.value() / divisor(b); }
  friend constexpr Int16 operator%(Int16 a, Int16 b) { return a.value() % divisor(b); }

 private:
  static constexpr int divisor(Int16 number) {
    if (number.value() != 0) return number.value();
    throw Error(ErrorNumber::division_by_zero, "The sums for Easter of this year divide by 0.");
  }

  std::int16_t value_;
};

}  // namespace

std::string easter_monday(std::int16_t year) {
  using std::chrono::days, std::chrono::month, std::chrono::sys_days;
  const Int16 y = year;
  const Int16 golden = y % 19;
  const Int16 century = y / 100;
  const Int16 h =
      (century - century / 4 - (Int16(8) * century + 13) / 25 + Int16(19) * golden + 15) % 30;
  const Int16 i =
      h - (h / 28) * (Int16(1) - (h / 28) * (Int16(29) / (h + 1)) * ((Int16(21) - golden) / 11));
  const Int16 j = (y + y / 4 + i + 2 - century + century / 4) % 7;
  const Int16 full_moon = i - j;
  const Int16 month_number = Int16(3) + (full_moon + 40) / 44;
  const Int16 sunday = full_moon + 28 - Int16(31) * (month_number / 4);
  // A day past the month's end carries into the next month.
  const std::chrono::year_month_day monday =
      sys_days{std::chrono::year{year} / month_number.value() / 1} + days{sunday.value()};
  return two_digits(static_cast<int>(unsigned{monday.day()})) +
         two_digits(static_cast<int>(unsigned{monday.month()}));
}

CalendarDay calendar_day(const DateTime& moment) {
  CalendarDay day;
  day.date_code = two_digits(moment.day()) + two_digits(moment.month());
  day.weekday = moment.weekday();
  day.holiday = day.weekday == 0 ||
                day.date_code == easter_monday(static_cast<std::int16_t>(moment.year())) ||
                std::ranges::find(fixed_holidays, day.date_code) != fixed_holidays.end();
  return day;
}

std::string train_list_statement(std::string_view columns, const CalendarDay& day) {
  const std::string admitted =
      statement("SELECT ", columns, " FROM generalita_treni WHERE (Giorni LIKE '% ", day.weekday,
                " %' OR Giorni LIKE '% ", day.date_code, " %'");
  if (day.holiday) {
    return statement(admitted,
                     " OR Giorni LIKE ' Fes ') AND (Giorni NOT LIKE '% eF %' AND"
                     " Giorni NOT LIKE '% e",
                     day.date_code, " %')");
  }
  return statement(admitted, ") AND Giorni NOT LIKE '% e", day.date_code, " %'");
}

Variant cmdl1::EasterMondayDate(std::int16_t Year) { return easter_monday(Year); }

}  // namespace ravelinox
