// Text comparison without regard to case, for every letter of the system's 8-bit code page
// (Windows-1252), on texts in UTF-8. Bytes that are no such letter, valid or not, stand for
// themselves.
#pragma once

#include <string_view>

namespace ravelinox::data {

/// Below, at or above 0 as `a` sorts before, with or after `b`.
[[nodiscard]] int compare_ignoring_case(std::string_view a, std::string_view b) noexcept;

[[nodiscard]] inline bool equal_ignoring_case(std::string_view a, std::string_view b) noexcept {
  return compare_ignoring_case(a, b) == 0;
}

/// Whether the whole of `text` matches `pattern`, in which "%" stands for any run of characters
/// and nothing else is special.
[[nodiscard]] bool matches_pattern(std::string_view text, std::string_view pattern) noexcept;

}  // namespace ravelinox::data
