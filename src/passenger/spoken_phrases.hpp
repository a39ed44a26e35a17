// The fixed phrases of the announcements, spelled as a synthesiser pronounces them.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace ravelinox {

/// A category's name as it is spoken, in most cases with a space at its end; nothing for a code
/// that is not announced.
[[nodiscard]] std::optional<std::string_view> spoken_category(std::string_view code);

/// " causa …" for a delay cause code: a phrase for its first two letters, then one for the whole
/// code; empty for a code that has neither.
[[nodiscard]] std::string spoken_cause(std::string_view code);

/// What is said when nothing is happening.
extern const std::array<std::string_view, 3> general_messages;

}  // namespace ravelinox
