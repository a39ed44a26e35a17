#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ravelinox {

/// The number that a text denotes: optional spaces around it, a sign, decimal digits with "." as
/// the mark, an exponent ("12", " -3.5 ", "1e3"). Nothing for any other text, the empty one too.
[[nodiscard]] std::optional<double> parse_number(std::string_view text);

/// The shortest text that reads back as the same number: decimal digits, with an exponent only for
/// numbers of more than fifteen digits or below a ten-millionth.
[[nodiscard]] std::string number_text(float number);
[[nodiscard]] std::string number_text(double number);

}  // namespace ravelinox
