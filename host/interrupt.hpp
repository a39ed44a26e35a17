#pragma once

#include <csignal>

namespace ravelinox::host {

inline constexpr int interrupted_exit_code = 130;

/// While it lives, Ctrl-C and a request to terminate only raise a flag, so that the program ends
/// between two calls of the component and every file stays whole.
class InterruptGuard {
 public:
  InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;
  ~InterruptGuard();

 private:
  struct sigaction previous_interrupt_ {};
  struct sigaction previous_terminate_ {};
};

/// Whether one of the two signals came since the guard was made.
[[nodiscard]] bool interrupted();

}  // namespace ravelinox::host
