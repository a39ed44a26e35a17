#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ravelinox/automation.h"

namespace ravelinox::automation {

/// The counted text of a text in UTF-8, owned by the caller; a broken byte becomes U+FFFD. Throws
/// `std::bad_alloc` without memory.
[[nodiscard]] rlx_text to_wire_text(std::string_view utf8);

/// The UTF-8 of a counted text, of which null is the empty one; half a pair becomes U+FFFD.
[[nodiscard]] std::string from_wire_text(const std::uint16_t* text);

/// The ASCII letters, small, of a name that ends with a zero; empty for any other name.
[[nodiscard]] std::string folded_name(const std::uint16_t* name);
[[nodiscard]] std::string folded_name(std::string_view name);

}  // namespace ravelinox::automation
