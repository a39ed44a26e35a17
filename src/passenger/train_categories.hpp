#pragma once

#include <optional>
#include <string_view>

namespace ravelinox {

/// The name of a train's category on the displays, from its category code, its mark and its
/// railway undertaking; nothing for a code that the displays do not show.
[[nodiscard]] std::optional<std::string_view> display_category(std::string_view code,
                                                               std::string_view mark,
                                                               std::string_view undertaking);

}  // namespace ravelinox
