// What the written descriptions of the interface share.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "core/members.hpp"

namespace ravelinox::automation {

[[nodiscard]] inline std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

/// Whether a property has a slot that sets it by reference.
[[nodiscard]] constexpr bool is_set_by_reference(members::Kind kind) {
  return members::is_object(kind) || kind == members::Kind::variant;
}

}  // namespace ravelinox::automation
