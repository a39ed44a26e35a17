#pragma once

#include <bitset>
#include <chrono>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/import/archive.hpp"

namespace ravelinox::host {

using Day = std::chrono::sys_days;

/// Reads YYYYMMDD, with or without hyphens; nothing when it is no day of the calendar.
[[nodiscard]] std::optional<Day> parse_day(std::string_view text);
[[nodiscard]] std::string show_day(Day day);  ///< "2026-04-22"

/// A set of days, counted from the calendar's first. A day code names days without their year, so
/// a timetable spans at most a year; the rest is room for trains that start after midnight.
using DaySet = std::bitset<400>;

/// The days on which a feed's services run.
struct Calendar {
  Day first;  ///< the first day on which one of the services runs
  Day last;
  std::unordered_map<std::string, DaySet> services;

  /// The service's days; none for an unknown service.
  [[nodiscard]] DaySet days(const std::string& service) const;
};

/// The days that the user asked for; without limits those of the feed.
struct Window {
  std::optional<Day> from;
  std::optional<Day> to;
};

/// Reads calendar.txt and calendar_dates.txt, of which one may be missing, for the services named.
/// Refuses dates that are none, days out of order, and services that together run over more than
/// a year, for which the window must be narrowed.
[[nodiscard]] Calendar read_calendar(const Archive& archive, const std::set<std::string>& services,
                                     const Window& window);

}  // namespace ravelinox::host
