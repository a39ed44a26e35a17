// Conversions between numbers and decimal text through the locale-free character conversions.
#include "platform/data/number.hpp"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/number_text.hpp"

namespace ravelinox::data {

namespace {

/// The value of a few digits and nothing else, as nearly all numbers in statements are.
std::optional<double> plain_digits(std::string_view text) {
  constexpr std::size_t most_digits = 15;  // any so long is exact
  if (text.empty() || text.size() > most_digits) return std::nullopt;
  std::int64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    value = 10 * value + (c - '0');
  }
  return static_cast<double>(value);
}

}  // namespace

std::optional<Number> read_number(std::string_view text) {
  if (const auto value = plain_digits(text)) return Number{*value, true};
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
