// What the library says of itself in the registry.
#include "automation/registration.hpp"

#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "automation/identifiers.hpp"
#include "automation/registry.hpp"
#include "platform/component_file.hpp"

namespace ravelinox::automation {
namespace {

const std::string kClassKey = "CLSID\\" + text_of(kClassId);
const std::string kInterfaceKey = "Interface\\" + text_of(kInterfaceId);
const std::string kLibraryKey = "TypeLib\\" + text_of(kTypeLibraryId);

std::vector<std::string> own_keys() { return {kClassKey, kInterfaceKey, kLibraryKey, kProgramId}; }

std::vector<RegistryEntry> own_entries() {
  const std::string program = kProgramId;
  const std::string library = text_of(kTypeLibraryId);
  return {
      {program, "cmdl1"},
      {program + "\\CLSID", text_of(kClassId)},
      {kClassKey, "cmdl1"},
      {kClassKey + "\\ProgID", program},
      {kClassKey + "\\InprocServer32", own_file()},
      {kClassKey + "\\InprocServer32\\ThreadingModel", "Apartment"},
      {kClassKey + "\\TypeLib", library},
      {kInterfaceKey, "_cmdl1"},
      {kInterfaceKey + "\\TypeLib", library},
      {kLibraryKey + "\\1.0", kLibraryName},
      {kLibraryKey + "\\1.0\\File", own_file()},
  };
}

rlx_result replace_own(const std::vector<RegistryEntry>& entries) {
  replace_entries(registry_path(), own_keys(), entries);
  return RLX_S_OK;
}

}  // namespace

rlx_result register_server() noexcept try {
  return replace_own(own_entries());
} catch (const std::exception&) {
  return RLX_SELFREG_E_CLASS;
}

rlx_result unregister_server() noexcept try {
  // Without a registry there is nothing to remove, and none is made.
  return std::filesystem::exists(registry_path()) ? replace_own({}) : rlx_result{RLX_S_OK};
} catch (const std::exception&) {
  return RLX_SELFREG_E_CLASS;
}

}  // namespace ravelinox::automation
