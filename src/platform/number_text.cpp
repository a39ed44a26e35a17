// Numbers from and to decimal text. The process's locale plays no part.
#include "platform/number_text.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace ravelinox {

namespace {

template <class Number>
std::string shortest(Number number) {
  // Plain digits as long as a person would write them; an exponent only beyond.
  constexpr Number small{1e-7F};
  constexpr Number large{1e15F};
  const Number size = std::abs(number);
  const bool plain = size == 0 || (size >= small && size < large);
  std::array<char, 64> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), number,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific);
  return {digits.data(), end.ptr};
}

}  // namespace

std::optional<double> parse_number(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return std::nullopt;
  text = text.substr(first, text.find_last_not_of(" \t") - first + 1);
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  // Digits only: the parser below would also take "inf", "nan" and a second sign.
  const std::size_t digits = text.starts_with('-') ? 1 : 0;
  if (text.size() == digits || text.find_first_not_of("0123456789.", digits) == digits) {
    return std::nullopt;
  }
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string number_text(float number) { return shortest(number); }
std::string number_text(double number) { return shortest(number); }

}  // namespace ravelinox
