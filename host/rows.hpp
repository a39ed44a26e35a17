#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/civil_time.hpp"
#include "ravelinox/data.hpp"

namespace ravelinox::host {

/// Runs a SELECT and hands every row of it to `visit`. The slot is closed however it ends.
template <class Visit>
void each_row(Recordset& slot, std::string_view select, Visit visit) {
  struct Closing {
    Recordset& slot;
    ~Closing() {
      if (slot.state() == ObjectState::open) slot.close();
    }
  };
  slot.open(select);
  const Closing closing{slot};
  for (; !slot.end_of_file(); slot.move_next()) visit(slot);
}

/// A cell's text; Null is empty.
[[nodiscard]] inline std::string text_at(Recordset& row, std::int16_t column) {
  return joined(row.field(column).value());
}

/// A cell's number or moment; nothing for Null and the empty text.
[[nodiscard]] inline std::optional<Timestamp> number_at(Recordset& row, std::int16_t column) {
  const Variant value = row.field(column).value();
  if (joined(value).empty()) return std::nullopt;
  return to_int32(value);
}

/// A text as a literal of a statement: an apostrophe inside is written twice.
[[nodiscard]] inline std::string literal(std::string_view text) {
  std::string written = "'";
  for (const char c : text) written += c == '\'' ? std::string("''") : std::string(1, c);
  return written + "'";
}

}  // namespace ravelinox::host
