// Numbers as statements and cells hold them: whole where they were written or stored whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ravelinox::data {

struct Number {
  double value = 0;
  bool is_whole = false;  ///< written without mark and exponent, and exact in `value`

  [[nodiscard]] std::int64_t whole() const { return static_cast<std::int64_t>(value); }
};

/// The number that the whole text denotes, or nothing.
[[nodiscard]] std::optional<Number> read_number(std::string_view text);

/// The 64-bit float whose shortest text is the shortest text of this 32-bit float: 0.1F is kept as
/// 0.1, not as 0.10000000149. Other programs then read what was meant, and a statement that
/// spells the number out meets it exactly.
[[nodiscard]] double decimal_form(float value);

}  // namespace ravelinox::data
