// Letters of the code page outside A-Z are two bytes each in UTF-8, in both cases, so folding keeps
// lengths.
#include "platform/text_case.hpp"

#include <cstddef>
#include <cstdint>
#include <string>

namespace ravelinox {

namespace {

std::string folded(std::string_view utf8) {
  std::string lower(utf8);
  for (std::size_t at = 0; at < lower.size(); ++at) {
    const auto byte = static_cast<std::uint8_t>(lower[at]);
    if (byte >= 'A' && byte <= 'Z') lower[at] = static_cast<char>(byte + ('a' - 'A'));
    if (at + 1 == lower.size()) break;
    const auto next = static_cast<std::uint8_t>(lower[at + 1]);
    const bool latin_capital = byte == 0xC3 && next >= 0x80 && next <= 0x9E && next != 0x97;
    const bool odd_capital = byte == 0xC5 && (next == 0x92 || next == 0xA0 || next == 0xBD);
    if (latin_capital) lower[at + 1] = static_cast<char>(next + 0x20);
    if (odd_capital) lower[at + 1] = static_cast<char>(next + 1);        // Œ, Š, Ž
    if (byte == 0xC5 && next == 0xB8) lower.replace(at, 2, "\xC3\xBF");  // Ÿ
  }
  return lower;
}

}  // namespace

bool equal_ignoring_case(std::string_view a, std::string_view b) {
  if (a.size() != b.size() || a == b) return a == b;
  return folded(a) == folded(b);
}

}  // namespace ravelinox
