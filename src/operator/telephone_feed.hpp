// What the component tells the program that shows the telephone's window: a file in memory that
// both hold and that only grows, one record for each message. A socket pair beside it carries a
// byte to the program for each record and a byte back when the operator has answered.
//
// Why not the messages through the socket itself: its buffer is small, and what does not fit must
// wait for the next call, which may never come. Into the file every message goes at once, at the
// cost of its own length, while the program is still starting, busy or stopped.
#pragma once

#include <sys/types.h>

#include <cstddef>

#include "platform/descriptor.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

/// The component's end. One writer tells one window's life, in which messages are only added.
class FeedWriter {
 public:
  /// Makes the file; false when the system has none to give.
  [[nodiscard]] bool open();
  /// Adds what the view has more than at the last time; false when it cannot be kept.
  [[nodiscard]] bool append(const TelephoneView& view);
  [[nodiscard]] int descriptor() const noexcept { return file_.get(); }

 private:
  Descriptor file_;
  off_t end_ = 0;
  std::size_t told_ = 0;  ///< length of the messages that lie in the file
};

/// The program's end.
class FeedReader {
 public:
  explicit FeedReader(int descriptor) noexcept : file_(descriptor) {}
  /// Brings the view up to date; false when nothing came since the last time.
  [[nodiscard]] bool update(TelephoneView& view);

 private:
  Descriptor file_;
  off_t read_ = 0;  ///< end of the last whole record that was read
};

}  // namespace ravelinox
