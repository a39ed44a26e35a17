// Dates and times as people type and read them. Everything is counted without time zone and
// daylight saving, as the simulation does: a day always has 24 hours.
#include "host/civil_time.hpp"

#include <array>
#include <charconv>
#include <chrono>
#include <ctime>
#include <limits>
#include <optional>

#include "host/refusal.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox::host {
namespace {

/// Takes a number of exactly `digits` digits off the front of the text.
std::optional<unsigned> take_number(std::string_view& text, std::size_t digits) {
  unsigned number = 0;
  if (text.size() < digits || text.front() == '-') return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + digits, number);
  if (error != std::errc() || end != text.data() + digits) return std::nullopt;
  text.remove_prefix(digits);
  return number;
}

bool take_sign(std::string_view& text, std::string_view accepted) {
  if (text.empty() || accepted.find(text.front()) == accepted.npos) return false;
  text.remove_prefix(1);
  return true;
}

/// "06:30" or "06:30:15" as seconds of the day; nothing when the text is anything else.
std::optional<std::int64_t> seconds_of_day(std::string_view text) {
  const auto hours = take_number(text, 2);
  if (!hours || *hours > 23 || !take_sign(text, ":")) return std::nullopt;
  const auto minutes = take_number(text, 2);
  if (!minutes || *minutes > 59) return std::nullopt;
  unsigned seconds = 0;
  if (take_sign(text, ":")) {
    const auto read = take_number(text, 2);
    if (!read || *read > 59) return std::nullopt;
    seconds = *read;
  }
  if (!text.empty()) return std::nullopt;
  return std::int64_t{*hours} * hour + std::int64_t{*minutes} * minute + seconds;
}

/// Takes "2026-06-10" off the front; nothing when it is no day of the calendar.
std::optional<std::chrono::sys_days> take_date(std::string_view& text) {
  const auto year = take_number(text, 4);
  if (!year || !take_sign(text, "-")) return std::nullopt;
  const auto month = take_number(text, 2);
  if (!month || !take_sign(text, "-")) return std::nullopt;
  const auto day_of_month = take_number(text, 2);
  if (!day_of_month) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(*year)),
                                         std::chrono::month(*month),
                                         std::chrono::day(*day_of_month)};
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date);
}

std::optional<std::int64_t> moment_in(std::string_view text) {
  const auto date = take_date(text);
  if (!date) return std::nullopt;
  const std::int64_t midnight = date->time_since_epoch().count() * std::int64_t{day};
  if (text.empty()) return midnight;
  if (!take_sign(text, " T")) return std::nullopt;
  const auto time = seconds_of_day(text);
  return time ? std::optional(midnight + *time) : std::nullopt;
}

DateTime civil(Timestamp moment) {
  return DateTime(std::chrono::sys_seconds(std::chrono::seconds(moment)));
}

}  // namespace

Timestamp parse_moment(std::string_view text) {
  const auto moment = moment_in(text);
  if (!moment) {
    throw Refusal("\"" + std::string(text) +
                  "\" is no date and time; write it as 2026-06-10 06:30.");
  }
  if (*moment < std::numeric_limits<Timestamp>::min() ||
      *moment > std::numeric_limits<Timestamp>::max()) {
    throw Refusal("\"" + std::string(text) +
                  "\" lies outside the years 1902 to 2037 that the simulation can count.");
  }
  return static_cast<Timestamp>(*moment);
}

Timestamp parse_moment_after(std::string_view text, Timestamp start) {
  const auto time = seconds_of_day(text);
  if (!time) return parse_moment(text);
  const std::int64_t same_day = std::int64_t{midnight_of(start)} + *time;
  return static_cast<Timestamp>(same_day > start ? same_day : same_day + day);
}

Timestamp midnight_of(Timestamp moment) { return moment - civil(moment).seconds_of_day(); }

Timestamp local_now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return static_cast<Timestamp>(now + local.tm_gmtoff);
}

std::string show_moment(Timestamp moment) {
  static constexpr std::array weekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  const DateTime shown = civil(moment);
  return std::string(weekdays.at(static_cast<std::size_t>(shown.weekday()))) + " " +
         format(shown, "yyyy-mm-dd hh:nn:ss");
}

std::string show_time(Timestamp moment) { return format(civil(moment), "hh:nn"); }

}  // namespace ravelinox::host
