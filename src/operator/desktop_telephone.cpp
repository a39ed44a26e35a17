// The telephone's window on the operator's desktop, shown by a program of its own: a toolkit in
// the host's process would end the host together with the display, clash with the host's toolkit
// and freeze while the host computes.
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "operator/telephone_process.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

namespace {

using Clock = std::chrono::steady_clock;

class DesktopWindow : public TelephoneWindow {
 public:
  DesktopWindow(std::string program, std::chrono::milliseconds retry_after)
      : program_(std::move(program)), retry_after_(retry_after) {}

  void show(const TelephoneView& view) override {
    if (!is_running()) start();
    if (process_) process_->tell(view);
  }

  bool closed() override {
    return process_ && process_->state() == TelephoneProcess::State::answered;
  }

 private:
  [[nodiscard]] bool is_running() {
    return process_ && process_->state() == TelephoneProcess::State::running;
  }

  void start() {
    const Clock::time_point now = Clock::now();
    if (started_ && now - *started_ < retry_after_) return;
    started_ = now;
    process_.reset();
    process_.emplace(program_);
  }

  std::string program_;
  std::chrono::milliseconds retry_after_;
  std::optional<Clock::time_point> started_;
  std::optional<TelephoneProcess> process_;
};

/// Whether a window could appear anywhere; without, no program need be started to find out.
bool has_display() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return true;
  }
  return false;
}

/// The program itself, or the one near a folder: as installed, as built, or laid beside the host.
std::optional<std::string> find_program(const std::filesystem::path& program_or_folder) {
  std::error_code unreadable;  // counts as not there
  if (!std::filesystem::is_directory(program_or_folder, unreadable)) {
    const bool runs = access(program_or_folder.c_str(), X_OK) == 0;
    return runs ? std::optional(program_or_folder.string()) : std::nullopt;
  }
  for (const char* place : {".", "../libexec", "../bin", "../../libexec"}) {
    const std::filesystem::path program = program_or_folder / place / "ravelinox-telephone";
    if (access(program.c_str(), X_OK) == 0) return program.string();
  }
  return std::nullopt;
}

}  // namespace

TelephoneWindowFactory desktop_telephone(const std::string& program_or_folder,
                                         std::chrono::milliseconds retry_after) {
  return [place = std::filesystem::absolute(program_or_folder),
          retry_after]() -> std::unique_ptr<TelephoneWindow> {
    if (!has_display()) return nullptr;
    std::optional<std::string> program = find_program(place);
    if (!program) return nullptr;
    return std::make_unique<DesktopWindow>(*std::move(program), retry_after);
  };
}

}  // namespace ravelinox
