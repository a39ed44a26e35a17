// Formatting of calendar moments by pattern. No locale is asked: separators are the pattern's own.
#include <algorithm>
#include <string>
#include <string_view>

#include "ravelinox/variant.hpp"

namespace ravelinox {

namespace {

std::string padded(int value, std::size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

}  // namespace

std::string format(const DateTime& moment, std::string_view pattern) {
  std::string text;
  for (std::size_t at = 0; at < pattern.size();) {
    const char letter = pattern[at];
    const std::size_t end = std::min(pattern.find_first_not_of(letter, at), pattern.size());
    const std::size_t width = end - at;
    switch (letter) {
      case 'd':
        text += padded(moment.day(), width);
        break;
      case 'm':
        text += padded(moment.month(), width);
        break;
      case 'y':
        text += padded(moment.year(), width);
        break;
      case 'h':
        text += padded(moment.hour(), width);
        break;
      case 'n':
        text += padded(moment.minute(), width);
        break;
      case 's':
        text += padded(moment.second(), width);
        break;
      default:
        text += pattern.substr(at, width);
    }
    at = end;
  }
  return text;
}

}  // namespace ravelinox
