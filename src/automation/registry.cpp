// The registry file: small, read whole and replaced whole.
#include "automation/registry.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <system_error>

#include "platform/descriptor.hpp"

namespace ravelinox::automation {
namespace {

constexpr std::string_view kEquals = " = ";

[[noreturn]] void fail(const std::filesystem::path& file) {
  throw std::system_error(errno != 0 ? errno : EIO, std::generic_category(), file.string());
}

/// Held while the object lives; the lock's file stays, as removing it would let in two at once.
Descriptor locked(std::filesystem::path registry) {
  const std::string file = (registry += ".lock").string();
  Descriptor lock(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock) fail(file);
  while (::flock(lock.get(), LOCK_EX) != 0)
    if (errno != EINTR) fail(file);
  return lock;
}

bool belongs_to(std::string_view key, std::string_view owner) {
  return key.starts_with(owner) && (key.size() == owner.size() || key[owner.size()] == '\\');
}

/// The lines that stay.
std::string others_lines(const std::filesystem::path& registry,
                         const std::vector<std::string>& owned) {
  std::string kept;
  errno = 0;
  std::ifstream file(registry, std::ios::binary);
  if (!file && std::filesystem::exists(registry)) fail(registry);
  for (std::string line; std::getline(file, line);) {
    const std::string_view key = std::string_view(line).substr(0, line.find(kEquals));
    const bool is_own =
        std::ranges::any_of(owned, [key](const auto& owner) { return belongs_to(key, owner); });
    if (!is_own) kept += line + '\n';
  }
  if (file.bad()) fail(registry);
  return kept;
}

void write_whole(const Descriptor& file, std::string_view text, const std::filesystem::path& path) {
  while (!text.empty()) {
    const ssize_t written = ::write(file.get(), text.data(), text.size());
    if (written < 0 && errno != EINTR) fail(path);
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
  if (::fsync(file.get()) != 0) fail(path);
}

void replace_file(const std::filesystem::path& registry, std::string_view text) {
  std::string temporary = registry.string() + ".XXXXXX";
  const Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
  if (!file) fail(temporary);
  try {
    write_whole(file, text, temporary);
    if (::rename(temporary.c_str(), registry.c_str()) != 0) fail(registry);
  } catch (...) {
    ::unlink(temporary.c_str());
    throw;
  }
}

}  // namespace

std::filesystem::path registry_path() {
  const auto variable = [](const char* name) -> std::filesystem::path {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
  };
  std::filesystem::path data = variable("XDG_DATA_HOME");
  if (!data.is_absolute()) data = variable("HOME") / ".local" / "share";
  if (!data.is_absolute())
    throw std::system_error(ENOENT, std::generic_category(), "no home folder: HOME is not set");
  return data / "ravelinox" / "registry";
}

void replace_entries(const std::filesystem::path& registry, const std::vector<std::string>& owned,
                     const std::vector<RegistryEntry>& entries) {
  std::filesystem::create_directories(registry.parent_path());
  const Descriptor lock = locked(registry);
  std::string text = others_lines(registry, owned);
  for (const RegistryEntry& entry : entries) {
    if (entry.value.find('\n') != std::string::npos)
      throw std::system_error(EINVAL, std::generic_category(), entry.value);
    text += entry.key + std::string(kEquals) + entry.value + '\n';
  }
  replace_file(registry, text);
}

}  // namespace ravelinox::automation
