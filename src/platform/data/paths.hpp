// Paths of database files as hosts give them.
#pragma once

#include <string>
#include <string_view>

namespace ravelinox::data {

/// The path with "/" for every backslash: databases move between platforms with their settings.
[[nodiscard]] std::string with_forward_slashes(std::string_view path);

/// The path that a connection string names: what follows "Data source =", to the end.
[[nodiscard]] std::string data_source(std::string_view connection_string);

}  // namespace ravelinox::data
