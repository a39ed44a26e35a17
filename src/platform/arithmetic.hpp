// Whole-number arithmetic that fails instead of wrapping.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <string>

#include "ravelinox/error.hpp"

namespace ravelinox {

/// `value` as a narrower whole number; 6 (overflow) when it does not fit.
template <std::signed_integral Narrow>
[[nodiscard]] constexpr Narrow checked(std::int64_t value) {
  if (value < std::numeric_limits<Narrow>::min() || value > std::numeric_limits<Narrow>::max()) {
    throw Error(ErrorNumber::overflow, "The whole number " + std::to_string(value) +
                                           " does not fit into " +
                                           std::to_string(8 * sizeof(Narrow)) + " bits.");
  }
  return static_cast<Narrow>(value);
}

[[nodiscard]] constexpr std::int32_t checked_add(std::int32_t a, std::int32_t b) {
  return checked<std::int32_t>(std::int64_t{a} + b);
}

[[nodiscard]] constexpr std::int32_t checked_subtract(std::int32_t a, std::int32_t b) {
  return checked<std::int32_t>(std::int64_t{a} - b);
}

}  // namespace ravelinox
