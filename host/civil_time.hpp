#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravelinox::host {

/// Whole seconds since 1 January 1970, without time zone: the component's measure of time.
using Timestamp = std::int32_t;

inline constexpr Timestamp minute = 60;
inline constexpr Timestamp hour = 60 * minute;
inline constexpr Timestamp day = 24 * hour;

/// Reads a date with or without a time of day.
///
///   2026-06-10            midnight
///   2026-06-10 06:30      also with "T" between the two
///   2026-06-10 06:30:15
///
/// Refuses everything else, days that the calendar lacks and moments beyond 32 bits.
[[nodiscard]] Timestamp parse_moment(std::string_view text);

/// As `parse_moment`; a time of day alone ("09:30") is the first such moment after `start`.
[[nodiscard]] Timestamp parse_moment_after(std::string_view text, Timestamp start);

/// 00:00:00 of the moment's day, also before 1970.
[[nodiscard]] Timestamp midnight_of(Timestamp moment);

/// The machine's local date and time of day, counted as a timestamp.
[[nodiscard]] Timestamp local_now();

[[nodiscard]] std::string show_moment(Timestamp moment);  ///< "Wed 2026-06-10 06:30:15"
[[nodiscard]] std::string show_time(Timestamp moment);    ///< "06:30"

}  // namespace ravelinox::host
