#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ravelinox {

/// What a route's origin signal shows.
struct Aspect {
  std::string code;
  bool changed_by_line = false;

  friend bool operator==(const Aspect&, const Aspect&) = default;
};

/// The aspect of a route of a class whose line end shows a letter, with or without the variant.
/// Nothing when the answer stays what it was.
[[nodiscard]] std::optional<Aspect> route_aspect(std::string_view route_class,
                                                 std::string_view line_letter, bool variant);

}  // namespace ravelinox
