// The weekly calendar and its exceptions become plain sets of days.
#include "host/import/calendar.hpp"

#include <array>
#include <charconv>
#include <map>

#include "host/import/csv.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

using std::chrono::days;
using std::chrono::years;

// Services that never end are read this far: enough to see that they span more than a year.
constexpr days farthest{800};

constexpr std::array<std::string_view, 7> weekdays = {"sunday",   "monday", "tuesday", "wednesday",
                                                      "thursday", "friday", "saturday"};

using ServiceDays = std::map<std::string, std::set<Day>>;

Day day_in(const FeedTable& row, std::string_view column) {
  if (const auto day = parse_day(row[column])) return *day;
  throw Refusal(row.place(column) + ": not a date; write it as 20260422.");
}

bool flag_in(const FeedTable& row, std::string_view column) {
  if (row[column] == "1") return true;
  if (row[column] == "0") return false;
  throw Refusal(row.place(column) + ": write 1 for a day of service and 0 for none.");
}

bool within(const Window& window, Day day) {
  return (!window.from || day >= *window.from) && (!window.to || day <= *window.to);
}

void add_week(const FeedTable& row, const Window& window, std::set<Day>& service) {
  std::array<bool, weekdays.size()> runs{};
  for (std::size_t i = 0; i < runs.size(); ++i) runs[i] = flag_in(row, weekdays[i]);
  auto first = day_in(row, "start_date");
  auto last = day_in(row, "end_date");
  if (last < first) throw Refusal(row.place("end_date") + ": lies before the start_date.");
  if (window.from && *window.from > first) first = *window.from;
  if (window.to && *window.to < last) last = *window.to;
  last = std::min(last, first + farthest);
  for (auto day = first; day <= last; day += days(1)) {
    if (runs[std::chrono::weekday(day).c_encoding()]) service.insert(day);
  }
}

void read_weeks(const Archive& archive, const Window& window, ServiceDays& services) {
  if (!archive.has("calendar.txt")) return;
  FeedTable row(archive, "calendar.txt",
                {"service_id", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday",
                 "sunday", "start_date", "end_date"});
  while (row.next()) {
    const auto service = services.find(row["service_id"]);
    if (service != services.end()) add_week(row, window, service->second);
  }
}

void read_exceptions(const Archive& archive, const Window& window, ServiceDays& services) {
  if (!archive.has("calendar_dates.txt")) return;
  FeedTable row(archive, "calendar_dates.txt", {"service_id", "date", "exception_type"});
  while (row.next()) {
    const auto service = services.find(row["service_id"]);
    if (service == services.end()) continue;
    const auto day = day_in(row, "date");
    if (row["exception_type"] == "2") {
      service->second.erase(day);
    } else if (row["exception_type"] != "1") {
      throw Refusal(row.place("exception_type") + ": write 1 for a day added, 2 for one removed.");
    } else if (within(window, day)) {
      service->second.insert(day);
    }
  }
}

void find_range(const ServiceDays& services, Calendar& calendar) {
  bool any = false;
  for (const auto& [id, service] : services) {
    if (service.empty()) continue;
    calendar.first = any ? std::min(calendar.first, *service.begin()) : *service.begin();
    calendar.last = any ? std::max(calendar.last, *service.rbegin()) : *service.rbegin();
    any = true;
  }
  if (!any) throw Refusal("None of the station's trains runs on any day of the dates asked for.");
}

/// The same date a year later, which is the first that a day code could not tell from it.
Day year_after(Day day) {
  const auto date = std::chrono::year_month_day(day) + years(1);
  return date.ok() ? Day(date) : Day(date.year() / std::chrono::March / 1);  // 29 February
}

void check_range(const Calendar& calendar) {
  const auto limit = year_after(calendar.first);
  if (calendar.last < limit) return;
  throw Refusal("The feed's trains run from " + show_day(calendar.first) + " to at least " +
                show_day(calendar.last) +
                ". Running days are kept without their year, so a timetable spans a year at most: "
                "narrow the dates, for example --from " +
                show_day(calendar.first) + " --to " + show_day(limit - days(1)) + ".");
}

}  // namespace

std::optional<Day> parse_day(std::string_view text) {
  std::string digits;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool hyphen = text[i] == '-' && text.size() == 10 && (i == 4 || i == 7);
    if (!hyphen) digits += text[i];
  }
  unsigned value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (digits.size() != 8 || error != std::errc() || end != digits.data() + digits.size()) return {};
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(value / 10000)),
                                         std::chrono::month(value / 100 % 100),
                                         std::chrono::day(value % 100));
  if (!date.ok() || value < 19000000) return {};
  return Day(date);
}

std::string show_day(Day day) {
  const std::chrono::year_month_day date(day);
  const auto two = [](unsigned number) {
    return std::string(number < 10 ? "-0" : "-") + std::to_string(number);
  };
  return std::to_string(static_cast<int>(date.year())) + two(unsigned{date.month()}) +
         two(unsigned{date.day()});
}

DaySet Calendar::days(const std::string& service) const {
  const auto found = services.find(service);
  return found == services.end() ? DaySet() : found->second;
}

Calendar read_calendar(const Archive& archive, const std::set<std::string>& services,
                       const Window& window) {
  if (!archive.has("calendar.txt") && !archive.has("calendar_dates.txt")) {
    throw Refusal(
        "The feed has neither calendar.txt nor calendar_dates.txt; one of them must say "
        "on which days its trips run.");
  }
  ServiceDays run_days;
  for (const auto& service : services) run_days[service];
  read_weeks(archive, window, run_days);
  read_exceptions(archive, window, run_days);
  Calendar calendar;
  find_range(run_days, calendar);
  check_range(calendar);
  for (const auto& [id, service] : run_days) {
    for (const auto day : service) {
      calendar.services[id].set(static_cast<std::size_t>((day - calendar.first).count()));
    }
  }
  return calendar;
}

}  // namespace ravelinox::host
