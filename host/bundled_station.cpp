// Where the bundled station lies. The program's own place decides, so that an installed tree can
// be moved.
#include "host/bundled_station.hpp"

#include <system_error>

#include "host/refusal.hpp"

namespace ravelinox::host {

std::filesystem::path bundled_station() {
  namespace fs = std::filesystem;
  std::error_code unknown;
  const fs::path program = fs::read_symlink("/proc/self/exe", unknown);
  const fs::path installed = program.parent_path().parent_path() / "share" / "ravelinox" / "empoli";
  for (const fs::path& folder : {installed, fs::path(RAVELINOX_SOURCE_DATA) / "empoli"}) {
    if (fs::is_directory(folder, unknown)) return folder;
  }
  throw Refusal("The bundled station was not found; it should lie in " + installed.string() + ".");
}

}  // namespace ravelinox::host
