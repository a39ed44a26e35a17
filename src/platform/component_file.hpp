#pragma once

#include <string>
#include <string_view>

#include "ravelinox/platform.hpp"

namespace ravelinox {

/// The path of a file in the component folder.
[[nodiscard]] inline std::string component_file(std::string_view name) {
  return platform().component_folder + "/" + std::string(name);
}

/// The real path of the file that holds the component, as it was when the library was loaded.
[[nodiscard]] const std::string& own_file();

}  // namespace ravelinox
