#pragma once

#include <sys/types.h>

#include <string>

#include "operator/telephone_feed.hpp"
#include "platform/descriptor.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

/// The program that shows the telephone's window, from its start to its end. Nothing here waits
/// for it. It lives no longer than the object, nor than the thread or process that started it.
class TelephoneProcess {
 public:
  enum class State {
    running,
    answered,  ///< the operator sent the answer or closed the window
    gone,      ///< never started, died or was killed
  };

  /// Starts the program, as a child of its own process group with no descriptors but ours.
  explicit TelephoneProcess(const std::string& program);
  TelephoneProcess(const TelephoneProcess&) = delete;
  TelephoneProcess& operator=(const TelephoneProcess&) = delete;
  /// Ends the program. It only shows what the form holds, so nothing is lost with it.
  ~TelephoneProcess();

  [[nodiscard]] State state();
  void tell(const TelephoneView& view);

 private:
  void end() noexcept;
  [[nodiscard]] bool reaped() noexcept;

  State state_ = State::gone;
  pid_t child_ = -1;  ///< -1: never started, or its end was collected
  Descriptor socket_;
  FeedWriter feed_;
};

}  // namespace ravelinox
