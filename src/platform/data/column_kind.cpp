// Declared types come from many hands: ours, other programs', converted files'. The first word is
// looked up; what is not in the table is judged by the letters in it, as the engine itself does.
#include "platform/data/column_kind.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "platform/data/text_order.hpp"
#include "platform/number_text.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox::data {
namespace {

struct NamedKind {
  std::string_view word;
  ColumnKind kind;
};

constexpr auto kNamedKinds = std::to_array<NamedKind>({
    {"BOOLEAN", ColumnKind::boolean}, {"BOOL", ColumnKind::boolean},
    {"BIT", ColumnKind::boolean},     {"YESNO", ColumnKind::boolean},
    {"LOGICAL", ColumnKind::boolean}, {"BYTE", ColumnKind::uint8},
    {"TINYINT", ColumnKind::uint8},   {"SMALLINT", ColumnKind::int16},
    {"SHORT", ColumnKind::int16},     {"INT2", ColumnKind::int16},
    {"INTEGER", ColumnKind::int32},   {"INT", ColumnKind::int32},
    {"LONG", ColumnKind::int32},      {"COUNTER", ColumnKind::int32},
    {"REAL", ColumnKind::float32},    {"SINGLE", ColumnKind::float32},
    {"FLOAT", ColumnKind::float64},   {"DOUBLE", ColumnKind::float64},
    {"NUMERIC", ColumnKind::float64}, {"DECIMAL", ColumnKind::float64},
    {"STRING", ColumnKind::text},     {"MEMO", ColumnKind::text},
});

[[nodiscard]] bool contains_any(std::string_view text,
                                std::initializer_list<std::string_view> parts) {
  return std::ranges::any_of(
      parts, [&](std::string_view part) { return text.find(part) != std::string_view::npos; });
}

[[nodiscard]] std::string in_capitals(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return result;
}

[[nodiscard]] Error overflow(const std::string& number, const WholeRange& range) {
  return {ErrorNumber::overflow, "The number " + number + " is outside the range of its column, " +
                                     std::to_string(range.lowest) + " to " +
                                     std::to_string(range.highest) + "."};
}

/// Halves go to the even neighbour, whatever rounding the process has set.
[[nodiscard]] double rounded(double value) {
  const double below = std::floor(value);
  const double part = value - below;
  if (part != 0.5) return part < 0.5 ? below : below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

[[nodiscard]] StoredValue whole_stored(double value, const WholeRange& range) {
  const double nearest = rounded(value);
  if (nearest >= static_cast<double>(range.lowest) && nearest <= static_cast<double>(range.highest))
    return StoredValue::of_whole(static_cast<std::int64_t>(nearest));
  throw overflow(number_text(value), range);
}

[[nodiscard]] StoredValue float32_stored(double value) {
  const auto single = static_cast<float>(value);
  if (std::isfinite(single)) return StoredValue::of_real(decimal_form(single));
  throw Error(ErrorNumber::overflow,
              "The number " + number_text(value) + " does not fit into a 32-bit float.");
}

[[nodiscard]] StoredValue float64_stored(double value) {
  if (std::isfinite(value)) return StoredValue::of_real(value);
  throw Error(ErrorNumber::overflow, "The result does not fit into a 64-bit float.");
}

[[nodiscard]] StoredValue text_stored(std::string text, std::string& scratch) {
  scratch = std::move(text);
  return StoredValue::of_text(scratch);
}

/// A variant's number; a 32-bit float stands for its shortest text.
[[nodiscard]] double number_of(const Variant& value) {
  if (const auto* single = value.get_if<float>()) return decimal_form(*single);
  return to_float64(value);
}

/// The value in the kind it has by itself, for a column without a declared one.
[[nodiscard]] StoredValue natural_stored(const Variant& value, std::string& scratch) {
  switch (value.kind()) {
    case Variant::Kind::empty:
      return {};
    case Variant::Kind::boolean:
      return StoredValue::of_whole(to_boolean(value) ? 1 : 0);
    case Variant::Kind::uint8:
    case Variant::Kind::int16:
    case Variant::Kind::int32:
      return StoredValue::of_whole(to_int32(value));
    case Variant::Kind::float32:
      return float32_stored(static_cast<double>(to_float32(value)));
    case Variant::Kind::float64:
      return float64_stored(to_float64(value));
    default:
      return text_stored(to_text(value), scratch);
  }
}

[[nodiscard]] Variant whole_variant(std::int64_t value, ColumnKind kind) {
  const auto range = range_of(kind);
  if (range && range->holds(value)) {
    if (kind == ColumnKind::uint8) return static_cast<std::uint8_t>(value);
    if (kind == ColumnKind::int16) return static_cast<std::int16_t>(value);
  }
  if (range_of(ColumnKind::int32)->holds(value)) return static_cast<std::int32_t>(value);
  return static_cast<double>(value);
}

[[nodiscard]] Variant float32_variant(double value) {
  const auto single = static_cast<float>(value);
  if (std::isfinite(single) || !std::isfinite(value)) return single;
  return value;
}

[[nodiscard]] Variant number_variant(const StoredValue& value, ColumnKind kind) {
  const bool whole = value.storage == Storage::whole;
  const double real = whole ? static_cast<double>(value.whole) : value.real;
  switch (kind) {
    case ColumnKind::boolean:
      return real != 0;
    case ColumnKind::float32:
      return float32_variant(real);
    case ColumnKind::float64:
      return real;
    case ColumnKind::text:
      return whole ? std::to_string(value.whole) : number_text(real);
    default:
      return whole ? whole_variant(value.whole, kind) : Variant(real);
  }
}

}  // namespace

ColumnKind kind_of(std::string_view declared_type) {
  const std::string type = in_capitals(declared_type);
  if (contains_any(type, {"CHAR", "CLOB", "TEXT"})) return ColumnKind::text;
  const std::string_view word = std::string_view(type).substr(0, type.find_first_of(" (\t"));
  const auto* named = std::ranges::find(kNamedKinds, word, &NamedKind::word);
  if (named != kNamedKinds.end()) return named->kind;
  if (contains_any(type, {"INT"})) return ColumnKind::int32;
  if (contains_any(type, {"REAL", "FLOA", "DOUB"})) return ColumnKind::float64;
  return ColumnKind::as_stored;
}

std::optional<WholeRange> range_of(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::uint8:
      return WholeRange{0, std::numeric_limits<std::uint8_t>::max()};
    case ColumnKind::int16:
      return WholeRange{std::numeric_limits<std::int16_t>::min(),
                        std::numeric_limits<std::int16_t>::max()};
    case ColumnKind::int32:
      return WholeRange{std::numeric_limits<std::int32_t>::min(),
                        std::numeric_limits<std::int32_t>::max()};
    default:
      return std::nullopt;
  }
}

Variant to_variant(const StoredValue& value, ColumnKind kind) {
  switch (value.storage) {
    case Storage::null:
      break;
    case Storage::whole:
    case Storage::real:
      return number_variant(value, kind);
    case Storage::text:
      return value.text;
    case Storage::bytes:
      throw Error(ErrorNumber::type_mismatch,
                  "The cell holds raw bytes, which are neither a number nor a text.");
  }
  return Variant::null();
}

StoredValue to_stored(const Number& value, ColumnKind kind, std::string& scratch) {
  if (const auto range = range_of(kind)) return whole_stored(value.value, *range);
  switch (kind) {
    case ColumnKind::boolean:
      return StoredValue::of_whole(value.value != 0 ? 1 : 0);
    case ColumnKind::float32:
      return float32_stored(value.value);
    case ColumnKind::text:
      return text_stored(value.is_whole ? std::to_string(value.whole()) : number_text(value.value),
                         scratch);
    default:
      if (value.is_whole) return StoredValue::of_whole(value.whole());
      return float64_stored(value.value);
  }
}

StoredValue to_stored(const Variant& value, ColumnKind kind, std::string& scratch) {
  if (value.is_null()) return {};
  switch (kind) {
    case ColumnKind::as_stored:
      return natural_stored(value, scratch);
    case ColumnKind::boolean:
      return StoredValue::of_whole(to_boolean(value) ? 1 : 0);
    case ColumnKind::text:
      if (const auto* text = value.get_if<std::string>()) return StoredValue::of_text(*text);
      return text_stored(to_text(value), scratch);
    default:
      if (const auto* whole = value.get_if<std::int32_t>())
        return to_stored(Number{static_cast<double>(*whole), true}, kind, scratch);
      return to_stored(Number{number_of(value)}, kind, scratch);
  }
}

}  // namespace ravelinox::data
