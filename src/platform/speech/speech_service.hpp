// The desktop's speech service as a voice.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <string>

#include "platform/speech/line_channel.hpp"
#include "ravelinox/platform.hpp"

namespace ravelinox {

/// How long the service may be silent before it counts as hanging.
struct SpeechPatience {
  std::chrono::milliseconds answer{5000};  ///< to connect, and for each answer to a command
  std::chrono::milliseconds start{10000};  ///< to come up once its program has been run
  /// Between two signs of progress with an announcement, the first of which may have to wait for
  /// others' messages; and more for each byte of it, for the slowest of voices.
  std::chrono::milliseconds progress{60000};
  std::chrono::milliseconds progress_per_byte{300};
  std::chrono::milliseconds after_failed_start{10000};  ///< before the program is run again
};

/// Makes voices of one speech service, and starts it when it does not run. Safe on any thread.
class SpeechService {
 public:
  /// `address` as in `parse_service_address`; empty for what the environment says when a voice is
  /// made.
  explicit SpeechService(SpeechPatience patience = {}, std::string address = {},
                         std::string program = "speech-dispatcher");

  /// A voice connected and ready; 429 when the service is not there and cannot be started, or
  /// does not answer as it should.
  [[nodiscard]] std::unique_ptr<Voice> voice();

 private:
  [[nodiscard]] LineChannel connect();
  [[nodiscard]] LineChannel start(const ServiceAddress& address);

  SpeechPatience patience_;
  std::string address_;
  std::string program_;
  std::mutex starting_;
  Deadline no_start_before_{};
};

}  // namespace ravelinox
