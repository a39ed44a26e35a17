#pragma once

#include <string_view>

namespace ravelinox {

/// Stands for a byte that begins no character.
inline constexpr char32_t broken_utf8 = 0xFFFD;

/// Takes the first code point off a text that is not empty; `broken_utf8`, and one byte less, where
/// none begins.
[[nodiscard]] char32_t take_code_point(std::string_view& text);

}  // namespace ravelinox
