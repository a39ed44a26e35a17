#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace ravelinox::automation {

/// A key, of parts joined by "\", and its value.
struct RegistryEntry {
  std::string key;
  std::string value;
};

/// The user's registry of components: "ravelinox/registry" in XDG_DATA_HOME, or in .local/share
/// in the home folder. Throws `std::system_error` when neither is known.
[[nodiscard]] std::filesystem::path registry_path();

/// Replaces all entries whose key is one of `owned` or begins with one and "\" by `entries`. The
/// file holds lines of "key = value"; lines of others keep their bytes and order. Readers see
/// either the old or the new file, and two writers wait for each other. Throws `std::system_error`,
/// and the file stays as it was, when it cannot be written.
void replace_entries(const std::filesystem::path& registry, const std::vector<std::string>& owned,
                     const std::vector<RegistryEntry>& entries);

}  // namespace ravelinox::automation
