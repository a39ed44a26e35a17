// What the written descriptions of the interface share.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace ravelinox::automation {

[[nodiscard]] inline std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

}  // namespace ravelinox::automation
