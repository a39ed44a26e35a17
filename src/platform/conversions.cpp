// Conversions between the kinds of a variant. The rules stand once here, for every interface and
// every cell; the process's locale plays no part.
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <ratio>
#include <string>
#include <string_view>

#include "platform/number_text.hpp"
#include "ravelinox/error.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox {

namespace {

using Days = std::chrono::duration<double, std::ratio<86400>>;
constexpr std::chrono::sys_days day_zero{std::chrono::year{1899} / 12 / 30};

[[noreturn]] void fail_mismatch(const std::string& what) {
  throw Error(ErrorNumber::type_mismatch, what);
}

[[noreturn]] void fail_null() {
  throw Error(ErrorNumber::invalid_use_of_null, "Null stands where a value is needed.");
}

/// Quotes at most the beginning of a text, so that a message stays one sentence.
std::string quoted(const std::string& text) {
  constexpr std::size_t shown = 60;
  return text.size() <= shown ? "\"" + text + "\"" : "\"" + text.substr(0, shown) + "…\"";
}

double number_of(const std::string& text) {
  if (const std::optional<double> number = parse_number(text)) return *number;
  fail_mismatch("The text " + quoted(text) + " is not a number.");
}

bool truth_of(const std::string& text) {
  if (text == "True") return true;
  if (text == "False") return false;
  return number_of(text) != 0;
}

/// Rounds halves to even, whatever rounding mode the host has set.
double round_half_even(double value) {
  const double lower = std::floor(value);
  const double rest = value - lower;
  if (rest != 0.5) return rest < 0.5 ? lower : lower + 1;
  return std::fmod(lower, 2.0) == 0 ? lower : lower + 1;
}

template <class Whole>
Whole to_whole(const Variant& value) {
  const double number = round_half_even(to_float64(value));
  if (!(number >= std::numeric_limits<Whole>::min() &&
        number <= std::numeric_limits<Whole>::max())) {
    throw Error(ErrorNumber::overflow, "The number " + number_text(number) + " does not fit into " +
                                           std::to_string(8 * sizeof(Whole)) + " bits.");
  }
  return static_cast<Whole>(number);
}

}  // namespace

double to_float64(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::empty:
      return 0;
    case Variant::Kind::null:
      fail_null();
    case Variant::Kind::boolean:
      return *value.get_if<bool>() ? -1 : 0;
    case Variant::Kind::uint8:
      return *value.get_if<std::uint8_t>();
    case Variant::Kind::int16:
      return *value.get_if<std::int16_t>();
    case Variant::Kind::int32:
      return *value.get_if<std::int32_t>();
    case Variant::Kind::float32:
      return static_cast<double>(*value.get_if<float>());
    case Variant::Kind::float64:
      return *value.get_if<double>();
    case Variant::Kind::text:
      return number_of(*value.get_if<std::string>());
    case Variant::Kind::date_time:
      return Days(value.get_if<DateTime>()->moment() - day_zero).count();
    case Variant::Kind::missing:
      fail_mismatch("An optional value that a number needs is missing.");
    case Variant::Kind::object:
      break;
  }
  fail_mismatch("An object stands where a number is needed.");
}

bool to_boolean(const Variant& value) {
  if (const auto* text = value.get_if<std::string>()) return truth_of(*text);
  return to_float64(value) != 0;
}

std::uint8_t to_uint8(const Variant& value) { return to_whole<std::uint8_t>(value); }
std::int16_t to_int16(const Variant& value) { return to_whole<std::int16_t>(value); }

std::int32_t to_int32(const Variant& value) {
  if (const auto* whole = value.get_if<std::int32_t>()) return *whole;
  return to_whole<std::int32_t>(value);
}

float to_float32(const Variant& value) {
  if (const auto* same = value.get_if<float>()) return *same;
  const double number = to_float64(value);
  if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max())) {
    throw Error(ErrorNumber::overflow,
                "The number " + number_text(number) + " does not fit into a 32-bit float.");
  }
  return static_cast<float>(number);
}

std::string to_text(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::empty:
      return {};
    case Variant::Kind::null:
      fail_null();
    case Variant::Kind::boolean:
      return *value.get_if<bool>() ? "True" : "False";
    case Variant::Kind::uint8:
      return std::to_string(*value.get_if<std::uint8_t>());
    case Variant::Kind::int16:
      return std::to_string(*value.get_if<std::int16_t>());
    case Variant::Kind::int32:
      return std::to_string(*value.get_if<std::int32_t>());
    case Variant::Kind::float32:
      return number_text(*value.get_if<float>());
    case Variant::Kind::float64:
      return number_text(*value.get_if<double>());
    case Variant::Kind::text:
      return *value.get_if<std::string>();
    case Variant::Kind::date_time:
      return format(*value.get_if<DateTime>(), "d/mm/yyyy h:nn:ss");
    case Variant::Kind::missing:
      fail_mismatch("An optional value that a text needs is missing.");
    case Variant::Kind::object:
      break;
  }
  fail_mismatch("An object stands where a text is needed.");
}

std::string joined(const Variant& value) {
  return value.is_null() ? std::string() : to_text(value);
}

}  // namespace ravelinox
