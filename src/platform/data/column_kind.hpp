// The kinds of columns, and how values enter and leave them. A file may hold anything in any
// column: a value that does not fit its column's kind is read as what it is, never bent to fit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/data/cells.hpp"
#include "platform/data/number.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox::data {

enum class ColumnKind : std::uint8_t {
  boolean,
  uint8,
  int16,
  int32,
  float32,
  float64,
  text,
  as_stored,  ///< no declared kind: each value is of the kind it was stored with
};

[[nodiscard]] ColumnKind kind_of(std::string_view declared_type);

struct WholeRange {
  std::int64_t lowest;
  std::int64_t highest;

  [[nodiscard]] bool holds(std::int64_t value) const { return value >= lowest && value <= highest; }
};

/// The range of a kind of whole numbers; nothing for the other kinds.
[[nodiscard]] std::optional<WholeRange> range_of(ColumnKind kind);

/// The cell as the host sees it. Whole numbers beyond 32 bits come as 64-bit floats, texts in
/// columns of numbers as texts; 13 for bytes that are no value at all.
[[nodiscard]] Variant to_variant(const StoredValue& value, ColumnKind kind);

/// `value` as a column of this kind keeps it: 6 outside its range, 13 when it is of no use there.
/// A text may refer to `value` or to `scratch`.
[[nodiscard]] StoredValue to_stored(const Variant& value, ColumnKind kind, std::string& scratch);
[[nodiscard]] StoredValue to_stored(const Number& value, ColumnKind kind, std::string& scratch);

}  // namespace ravelinox::data
