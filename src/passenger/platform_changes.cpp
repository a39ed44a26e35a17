#include "passenger/platform_changes.hpp"

#include "platform/number_text.hpp"

namespace ravelinox {

std::optional<std::string> changed_platform(std::string_view changes, std::int32_t train) {
  std::optional<std::string> track;
  for (std::size_t bar = changes.find('|'); bar != std::string_view::npos;) {
    const std::size_t next = changes.find('|', bar + 1);
    const std::string_view piece = changes.substr(bar + 1, next - bar - 1);
    bar = next;
    const std::size_t at = piece.find('@');
    if (at == std::string_view::npos || parse_number(piece.substr(0, at)) != train) continue;
    const std::string_view rest = piece.substr(at + 1);
    track = rest.substr(0, rest.find('@'));
  }
  return track;
}

}  // namespace ravelinox
