// What kind of day a calendar day is, and which trains run on it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/clock.hpp"

namespace ravelinox {

/// A calendar day as the day codes of trains name it.
struct CalendarDay {
  std::string date_code;  ///< day and month, two digits each: "2512"
  int weekday = 0;        ///< 0 for Sunday to 6 for Saturday
  bool holiday = false;
};

/// The date code of Easter Monday. The sums are 16 bits wide: 6 (overflow) where one leaves them,
/// from the year 26191 on.
[[nodiscard]] std::string easter_monday(std::int16_t year);

/// The day that a moment lies in.
[[nodiscard]] CalendarDay calendar_day(const DateTime& moment);

/// The statement that lists the trains whose day code admits a day.
[[nodiscard]] std::string train_list_statement(std::string_view columns, const CalendarDay& day);

}  // namespace ravelinox
