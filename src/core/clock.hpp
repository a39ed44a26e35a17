// Timestamps and calendar moments inside the component.
#pragma once

#include <chrono>
#include <cstdint>

#include "ravelinox/variant.hpp"

namespace ravelinox {

/// Whole seconds since 1 January 1970, 00:00:00; every day has 86400 of them.
using Timestamp = std::int32_t;

inline constexpr Timestamp one_day = 86400;

[[nodiscard]] constexpr DateTime to_date_time(Timestamp timestamp) {
  return DateTime(std::chrono::sys_seconds(std::chrono::seconds(timestamp)));
}

}  // namespace ravelinox
