// Every accented letter of the code page takes two bytes in UTF-8, in both cases. So texts are
// compared in units of one byte or of one such letter, without decoding the rest.
#include "platform/data/text_order.hpp"

#include <cstddef>
#include <cstdint>

namespace ravelinox::data {
namespace {

using Unit = std::uint_fast16_t;

/// The lower case of a two-byte sequence, if it is a capital letter of the code page.
[[nodiscard]] constexpr Unit lower_case(Unit pair) noexcept {
  if (pair >= 0xC380 && pair <= 0xC39E && pair != 0xC397) return pair + 0x20;  // À to Þ, but not ×
  switch (pair) {
    case 0xC592:  // Œ
    case 0xC5A0:  // Š
    case 0xC5BD:  // Ž
      return pair + 1;
    case 0xC5B8:  // Ÿ
      return 0xC3BF;
    default:
      return pair;
  }
}

/// Takes the next unit off the front of a text that is not empty.
[[nodiscard]] Unit take_unit(std::string_view& text) noexcept {
  const auto first = static_cast<unsigned char>(text[0]);
  text.remove_prefix(1);
  if (first < 0x80) return first >= 'A' && first <= 'Z' ? Unit{first} + 0x20 : first;
  if ((first != 0xC3 && first != 0xC5) || text.empty()) return Unit{first} << 8;
  const auto second = static_cast<unsigned char>(text[0]);
  if (second < 0x80 || second > 0xBF) return Unit{first} << 8;
  text.remove_prefix(1);
  return lower_case((Unit{first} << 8) | second);
}

/// Takes `prefix` off the front of `text` if it starts so; leaves `text` alone if not.
[[nodiscard]] bool take_prefix(std::string_view& text, std::string_view prefix) noexcept {
  std::string_view rest = text;
  while (!prefix.empty()) {
    if (rest.empty() || take_unit(rest) != take_unit(prefix)) return false;
  }
  text = rest;
  return true;
}

/// Takes everything up to and with the first `piece` off the front of `text`.
[[nodiscard]] bool take_through(std::string_view& text, std::string_view piece) noexcept {
  for (;;) {
    if (take_prefix(text, piece)) return true;
    if (text.empty()) return false;
    (void)take_unit(text);
  }
}

[[nodiscard]] bool ends_with(std::string_view text, std::string_view ending) noexcept {
  return text.size() >= ending.size() &&
         equal_ignoring_case(text.substr(text.size() - ending.size()), ending);
}

}  // namespace

int compare_ignoring_case(std::string_view a, std::string_view b) noexcept {
  while (!a.empty() && !b.empty()) {
    const Unit left = take_unit(a);
    const Unit right = take_unit(b);
    if (left != right) return left < right ? -1 : 1;
  }
  return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

bool matches_pattern(std::string_view text, std::string_view pattern) noexcept {
  std::size_t wildcard = pattern.find('%');
  if (wildcard == std::string_view::npos) return equal_ignoring_case(text, pattern);
  if (!take_prefix(text, pattern.substr(0, wildcard))) return false;
  for (;;) {  // the leftmost place of each piece leaves the most room for the pieces after it
    pattern.remove_prefix(wildcard + 1);
    wildcard = pattern.find('%');
    if (wildcard == std::string_view::npos) return ends_with(text, pattern);
    if (!take_through(text, pattern.substr(0, wildcard))) return false;
  }
}

}  // namespace ravelinox::data
