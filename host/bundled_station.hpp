#pragma once

#include <filesystem>

namespace ravelinox::host {

/// The folder of the station that comes with the program: beside an installed program in its
/// prefix's share folder, else in the source tree that it was built from. Refuses when it is in
/// neither.
[[nodiscard]] std::filesystem::path bundled_station();

}  // namespace ravelinox::host
