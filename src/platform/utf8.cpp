// Reading UTF-8 one code point at a time.
#include "platform/utf8.hpp"

#include <cstdint>

namespace ravelinox {

char32_t take_code_point(std::string_view& text) {
  const auto lead = static_cast<std::uint8_t>(text.front());
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length < 2 || text.size() < length) {
    text.remove_prefix(1);
    return length == 1 ? lead : broken_utf8;
  }
  char32_t point = lead & (0x7FU >> length);
  for (std::size_t at = 1; at < length; ++at) {
    const auto next = static_cast<std::uint8_t>(text[at]);
    if ((next & 0xC0U) != 0x80U) {
      text.remove_prefix(1);
      return broken_utf8;
    }
    point = (point << 6U) | (next & 0x3FU);
  }
  text.remove_prefix(length);
  return point;
}

}  // namespace ravelinox
