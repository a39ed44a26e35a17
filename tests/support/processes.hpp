// What a test of child processes asks the system, and how it waits for an end without taking part
// in it.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace ravelinox::testing {

/// The children of this thread, dead ones that nobody has collected included.
inline std::vector<pid_t> children() {
  std::ifstream list("/proc/thread-self/children");
  return {std::istream_iterator<pid_t>(list), {}};
}

inline std::size_t open_descriptors() {
  const std::filesystem::directory_iterator each("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(each), end(each)));
}

/// Waits for a child's end and leaves its status to be collected by whom it concerns.
inline void wait_for_end(pid_t child) {
  siginfo_t how{};
  waitid(P_PID, static_cast<id_t>(child), &how, WEXITED | WNOWAIT);
}

/// A variable of the environment, set (or with null, absent) for the object's lifetime.
class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    set(value);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() { set(before_ ? before_->c_str() : nullptr); }

 private:
  void set(const char* value) const {
    (void)(value != nullptr ? setenv(name_, value, 1) : unsetenv(name_));
  }

  const char* name_;
  std::optional<std::string> before_;
};

}  // namespace ravelinox::testing
