#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <string>

#include "ravelinox/platform.hpp"

namespace ravelinox::host {

using AnnouncementSink = std::function<void(const std::string&)>;
using VoiceFactory = std::function<std::unique_ptr<Voice>()>;

/// A voice for `Platform::voice` that hands every announcement on as text and is done with it, so
/// that a machine without sound loses nothing.
[[nodiscard]] VoiceFactory voice_to(AnnouncementSink sink);

/// Speaks beside the running clock: a voice takes as long as the sentence, in which a simulated
/// station may see three trains.
class Loudspeaker {
 public:
  explicit Loudspeaker(VoiceFactory voices) : voices_(std::move(voices)) {}

  /// Begins to speak. Left out while an earlier announcement is still being spoken, since it would
  /// come too late, and for good after a failure.
  void say(const std::string& text);

  /// Waits for the end of what is being spoken. Why announcements are not spoken any more; empty
  /// when they are.
  [[nodiscard]] const std::string& failure();

  /// The same, yet an announcement that has been spoken for longer than `longest` is left to
  /// itself, and that is the reason given: a voice that hangs must not hold up the end of a run.
  [[nodiscard]] std::string failure_within(std::chrono::seconds longest);

 private:
  VoiceFactory voices_;
  std::string failure_;
  std::future<std::string> speaking_;  ///< not waited for when it is destroyed
  std::chrono::steady_clock::time_point began_{};
};

}  // namespace ravelinox::host
