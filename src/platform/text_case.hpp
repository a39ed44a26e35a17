#pragma once

#include <string_view>

namespace ravelinox {

/// Whether two UTF-8 texts are equal without regard to upper and lower case, for every letter of
/// the code page.
[[nodiscard]] bool equal_ignoring_case(std::string_view a, std::string_view b);

}  // namespace ravelinox
