// Finds the shortest day code for a set of days. Whether a weekday is named or not, its exceptions
// are listed one by one; the weekdays do not meddle with each other, so each is decided alone.
#include "host/import/day_code.hpp"

#include <array>
#include <set>

#include "ravelinox/cmdl1.hpp"

namespace ravelinox::host {
namespace {

using std::chrono::year_month_day;

constexpr std::array<const char*, 10> fixed_holidays = {"0101", "0601", "2504", "0105", "0206",
                                                        "1508", "0111", "0812", "2512", "2612"};

std::string date_code(Day day) {
  const year_month_day date(day);
  const auto two = [](unsigned n) { return std::string(n < 10 ? "0" : "") + std::to_string(n); };
  return two(unsigned{date.day()}) + two(unsigned{date.month()});
}

}  // namespace

DayCodes::DayCodes(Day first, std::size_t count) {
  const std::set<std::string> fixed(fixed_holidays.begin(), fixed_holidays.end());
  cmdl1 engine;
  for (Day day = first; days_.size() < count; day += std::chrono::days(1)) {
    const auto year = static_cast<int>(year_month_day(day).year());
    const auto easter_monday = engine.EasterMondayDate(static_cast<std::int16_t>(year));
    const auto date = date_code(day);
    const auto weekday = std::chrono::weekday(day).c_encoding();
    const bool holiday = weekday == 0 || date == to_text(easter_monday) || fixed.contains(date);
    days_.push_back({date, weekday, holiday});
  }
}

/// A code under the assumption that holidays are left out, or not; empty when it cannot be.
std::string DayCodes::by_weekdays(const DaySet& days, std::size_t from, std::size_t to,
                                  bool no_holidays) const {
  std::array<std::string, 7> listed;    // the weekday is not named: its running days are
  std::array<std::string, 7> excepted;  // the weekday is named: its days of rest are
  for (auto i = from; i <= to; ++i) {
    const auto& [date, weekday, holiday] = days_[i];
    if (no_holidays && holiday && days[i]) return {};
    if (no_holidays && holiday) continue;
    (days[i] ? listed[weekday] : excepted[weekday]) += (days[i] ? "" : "e") + date + " ";
  }
  std::string named = " ";
  std::string exceptions;
  for (std::size_t i = 0; i < listed.size(); ++i) {
    const bool name = 2 + excepted[i].size() < listed[i].size();
    if (name) named += std::to_string(i) + " ";
    exceptions += name ? excepted[i] : listed[i];
  }
  return named + exceptions + (no_holidays ? "eF " : "");
}

std::string DayCodes::code(const DaySet& days, std::size_t from, std::size_t to) const {
  bool holidays_alone = true;
  for (auto i = from; i <= to; ++i) holidays_alone = holidays_alone && days[i] == days_[i].holiday;
  std::string shortest = by_weekdays(days, from, to, false);
  for (const auto& code :
       {by_weekdays(days, from, to, true), std::string(holidays_alone ? " Fes " : "")}) {
    if (!code.empty() && code.size() < shortest.size()) shortest = code;
  }
  return shortest;
}

}  // namespace ravelinox::host
