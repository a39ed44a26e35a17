// Statements are joined from literal pieces and values: whole numbers as decimal digits with a
// leading minus sign, texts as they stand, variants by their text form (Null as nothing).
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "ravelinox/variant.hpp"

namespace ravelinox {

namespace detail {
inline void join_piece(std::string& text, std::string_view piece) { text += piece; }
inline void join_piece(std::string& text, const std::same_as<Variant> auto& value) {
  text += joined(value);
}
inline void join_piece(std::string& text, std::integral auto value) {
  text += std::to_string(value);
}
}  // namespace detail

template <class... Pieces>
[[nodiscard]] std::string statement(const Pieces&... pieces) {
  std::string text;
  text.reserve(256);
  (detail::join_piece(text, pieces), ...);
  return text;
}

}  // namespace ravelinox
