// Conversions between numbers and decimal text through the locale-free character conversions.
#include "platform/data/number.hpp"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/number_text.hpp"

namespace ravelinox::data {

std::optional<Number> read_number(std::string_view text) {
  constexpr double exact_limit = 9007199254740992;  // beyond 2^53 a float has gaps
  const auto value = parse_number(text);
  if (!value) return std::nullopt;
  const bool only_digits = text.find_first_of(".eE") == std::string_view::npos;
  return Number{*value, only_digits && std::abs(*value) <= exact_limit};
}

double decimal_form(float value) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  double decimal = static_cast<double>(value);  // stays for an infinity
  std::from_chars(digits.data(), end, decimal);
  return decimal;
}

}  // namespace ravelinox::data
