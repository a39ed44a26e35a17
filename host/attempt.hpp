#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "host/console.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox::host {

/// "error 3021: …"; the data layer's numbers in their usual form, "error 0x80040E37: …".
[[nodiscard]] std::string describe(const Error& error);

/// Closes the slots of the component that a failed call left open: the next call that needs one
/// would fail on it.
void close_open_slots(cmdl1& component);

/// Calls the component and survives: a failure is said, the slots are closed, the day goes on.
///
///   attempt("The station information file", [&] { component.AggiornaFileSSI(now); });
class Attempt {
 public:
  using Say = std::function<void(const std::string& sentence)>;

  Attempt(cmdl1& component, Say say) : component_(component), say_(std::move(say)) {}
  /// Says failures on the console's error stream.
  Attempt(cmdl1& component, Console& console)
      : Attempt(component, [&console](const std::string& text) { console.err << text << '\n'; }) {}

  /// Whether the call succeeded.
  template <class Call>
  bool operator()(std::string_view what, Call&& call) {
    try {
      std::forward<Call>(call)();
      return true;
    } catch (const Error& error) {
      recover(what, error);
      return false;
    }
  }

  [[nodiscard]] int failures() const { return failures_; }

 private:
  void recover(std::string_view what, const Error& error);

  cmdl1& component_;
  Say say_;
  int failures_ = 0;
};

}  // namespace ravelinox::host
