// Reading the cells of a slot's current row.
#pragma once

#include <cstdint>
#include <string>

#include "core/clock.hpp"
#include "ravelinox/data.hpp"

namespace ravelinox {

[[nodiscard]] inline Variant cell(Recordset& slot, std::int16_t position) {
  return slot.field(position).value();
}

/// Whether an event exists in a row: its time is neither Null nor the empty text.
[[nodiscard]] inline bool present(const Variant& time) {
  const auto* text = time.get_if<std::string>();
  return !time.is_null() && !time.is_empty() && !(text != nullptr && text->empty());
}

/// Exact, case-sensitive equality of two texts; Null equals nothing.
[[nodiscard]] inline bool same_text(const Variant& a, const Variant& b) {
  const auto* first = a.get_if<std::string>();
  const auto* second = b.get_if<std::string>();
  if (first != nullptr && second != nullptr) return *first == *second;  // the usual case, uncopied
  return !a.is_null() && !b.is_null() && to_text(a) == to_text(b);
}

}  // namespace ravelinox
