// One connection to the speech service, over its socket protocol: a command is a line, an answer
// one or more lines that open with a number of three digits; events of messages come in between.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/speech/line_channel.hpp"
#include "platform/speech/speech_service.hpp"

namespace ravelinox {

/// A text as the protocol sends it: lines end with CR LF, a dot at a line's start is doubled, and
/// a line of one dot closes it.
[[nodiscard]] std::string as_message(std::string_view text);

class ServiceVoice final : public Voice {
 public:
  /// Introduces itself; `ServiceFailure` when the service does not answer as it should.
  ServiceVoice(LineChannel channel, const SpeechPatience& patience);
  ServiceVoice(const ServiceVoice&) = delete;
  ServiceVoice& operator=(const ServiceVoice&) = delete;
  ~ServiceVoice() override;

  /// Returns when the service reports the end of the message, or that somebody silenced it.
  /// 0x80004005 when it does neither; the voice is of no use afterwards.
  void speak(const std::string& text) override;

 private:
  struct Answer {
    int code;
    std::vector<std::string> lines;
  };

  [[nodiscard]] Answer receive(Deadline deadline);
  /// Sends, and gives the answer; events that come before it are kept.
  [[nodiscard]] Answer ask(std::string_view text);
  void command(std::string_view text, int expected);
  void say(const std::string& text);
  void wait_for_end(const std::string& message, std::chrono::milliseconds patience);

  LineChannel channel_;
  SpeechPatience patience_;
  std::deque<Answer> events_;
};

}  // namespace ravelinox
