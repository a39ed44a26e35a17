// The seams' defaults and the set in force.
#include "ravelinox/platform.hpp"

#include <dlfcn.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/component_file.hpp"
#include "platform/defaults.hpp"

namespace ravelinox {

namespace {

/// The real path of the file that holds this code, whether program, shared object or module.
std::string find_own_file() {
  Dl_info info{};
  static const char anchor = 0;
  std::error_code failed;
  std::filesystem::path file;
  // A statically linked program may be named by the bare word it was started with.
  const bool found = dladdr(&anchor, &info) != 0 && info.dli_fname != nullptr &&
                     std::string_view(info.dli_fname).find('/') != std::string_view::npos;
  if (found) file = std::filesystem::canonical(info.dli_fname, failed);
  if (file.empty() || failed) file = std::filesystem::read_symlink("/proc/self/exe", failed);
  return file.string();
}

void ring_terminal_bell() {
  using Clock = std::chrono::steady_clock;
  thread_local Clock::time_point last{};
  const Clock::time_point now = Clock::now();
  if (now - last < std::chrono::milliseconds(300) || isatty(STDERR_FILENO) == 0) return;
  last = now;
  // A terminal that cannot be written to just stays silent.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, "\a", 1);
}

Platform default_platform() {
  const std::string folder = std::filesystem::path(own_file()).parent_path().string();
  return {make_clock_seeded_source(), folder, desktop_telephone(folder), ring_terminal_bell,
          make_speech_service_voices()};
}

// Made while the library loads, before the host can change its working folder.
const std::string& folder_at_load = platform().component_folder;

}  // namespace

const std::string& own_file() {
  static const std::string file = find_own_file();
  return file;
}

Platform& platform() {
  static Platform in_force = default_platform();
  return in_force;
}

PlatformOverride::PlatformOverride(Platform replacement)
    : previous_(std::exchange(platform(), std::move(replacement))) {}

PlatformOverride::~PlatformOverride() { platform() = std::move(previous_); }

}  // namespace ravelinox
