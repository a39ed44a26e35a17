#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ravelinox {

/// The track that a list of platform changes ("|2345@3|10271@1") gives a train: the one of the
/// last piece for it. What precedes the first "|" is no piece; a malformed piece is ignored.
[[nodiscard]] std::optional<std::string> changed_platform(std::string_view changes,
                                                          std::int32_t train);

}  // namespace ravelinox
