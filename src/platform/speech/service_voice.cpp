#include "platform/speech/service_voice.hpp"

#include <unistd.h>

#include <array>
#include <utility>

#include "ravelinox/error.hpp"

namespace ravelinox {

namespace {

/// The numbers of the protocol that matter here.
namespace code {
constexpr int priority_set = 202;
constexpr int client_name_set = 208;
constexpr int markup_set = 219;
constexpr int notification_set = 220;
constexpr int message_queued = 225;
constexpr int message_empty = 227;
constexpr int receiving_data = 230;
constexpr int first_event = 700;
constexpr int spoken = 702;
constexpr int silenced = 703;  // by the user, or by a message that could not wait
}  // namespace code

struct Command {
  std::string_view text;
  int expected;
};

/// All events, so that the end is heard of; text as it stands, without markup; and the priority
/// of messages, which wait for one another where plain texts replace one another.
constexpr std::array<Command, 3> introduction{
    {{"SET SELF NOTIFICATION ALL ON", code::notification_set},
     {"SET SELF SSML_MODE OFF", code::markup_set},
     {"SET SELF PRIORITY MESSAGE", code::priority_set}}};

/// More lines than any answer, and more events than any message, has.
constexpr std::size_t too_many = 1000;

bool is_digit(char letter) { return letter >= '0' && letter <= '9'; }

/// The number that opens a line of an answer.
int code_of(const std::string& line) {
  if (line.size() < 4 || !is_digit(line[0]) || !is_digit(line[1]) || !is_digit(line[2]) ||
      (line[3] != '-' && line[3] != ' ')) {
    throw ServiceFailure("it does not keep to the protocol");
  }
  return std::stoi(line.substr(0, 3));
}

}  // namespace

std::string as_message(std::string_view text) {
  std::string message;
  bool line_start = true;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char letter = text[at];
    const bool line_end = letter == '\n' || letter == '\r';
    if (letter == '\r' && text.substr(at + 1).starts_with('\n')) continue;
    if (line_start && letter == '.') message += '.';
    // A NUL would end the text for the service, and its reader wait for ever.
    if (line_end) {
      message += "\r\n";
    } else {
      message += letter == '\0' ? ' ' : letter;
    }
    line_start = line_end;
  }
  return message + "\r\n.\r\n";
}

ServiceVoice::ServiceVoice(LineChannel channel, const SpeechPatience& patience)
    : channel_(std::move(channel)), patience_(patience) {
  command("SET SELF CLIENT_NAME " + std::to_string(geteuid()) + ":ravelinox:announcements",
          code::client_name_set);
  for (const Command& each : introduction) command(each.text, each.expected);
}

ServiceVoice::~ServiceVoice() { channel_.part_with("QUIT\r\n"); }

void ServiceVoice::speak(const std::string& text) {
  if (text.empty()) return;
  try {
    say(text);
  } catch (const ServiceFailure& failure) {
    // What is still queued must not be heard later, out of place.
    channel_.part_with("CANCEL SELF\r\nQUIT\r\n");
    throw Error(ErrorNumber::speech_failure,
                std::string("The speech service did not speak an announcement: ") + failure.what() +
                    ". Restart speech-dispatcher if it goes on.");
  }
}

ServiceVoice::Answer ServiceVoice::receive(Deadline deadline) {
  Answer answer{};
  for (bool last = false; !last;) {
    std::string line = channel_.receive_line(deadline);
    answer.code = code_of(line);
    last = line[3] == ' ';
    answer.lines.push_back(line.substr(4));
    if (answer.lines.size() > too_many) throw ServiceFailure("it sent an answer without end");
  }
  return answer;
}

ServiceVoice::Answer ServiceVoice::ask(std::string_view text) {
  const Deadline deadline = deadline_in(patience_.answer);
  channel_.send(text, deadline);
  for (;;) {
    Answer answer = receive(deadline);
    if (answer.code < code::first_event) return answer;
    events_.push_back(std::move(answer));
    if (events_.size() > too_many) throw ServiceFailure("it sent events instead of an answer");
  }
}

void ServiceVoice::command(std::string_view text, int expected) {
  const Answer answer = ask(std::string(text) + "\r\n");
  if (answer.code != expected) {
    throw ServiceFailure("it answered \"" + answer.lines.back() + "\" to " + std::string(text));
  }
}

void ServiceVoice::say(const std::string& text) {
  command("SPEAK", code::receiving_data);
  const Answer queued = ask(as_message(text));
  if (queued.code == code::message_empty) return;
  if (queued.code != code::message_queued) {
    throw ServiceFailure("it answered \"" + queued.lines.back() + "\" to the text");
  }
  const auto bytes = static_cast<std::chrono::milliseconds::rep>(text.size());
  wait_for_end(queued.lines.front(), patience_.progress + patience_.progress_per_byte * bytes);
}

void ServiceVoice::wait_for_end(const std::string& message, std::chrono::milliseconds patience) {
  Deadline deadline = deadline_in(patience);
  for (;;) {
    if (events_.empty()) events_.push_back(receive(deadline));
    const Answer event = std::move(events_.front());
    events_.pop_front();
    if (event.code >= code::first_event && event.lines.front() == message) {
      if (event.code == code::spoken || event.code == code::silenced) return;
      deadline = deadline_in(patience);
    } else if (std::chrono::steady_clock::now() >= deadline) {
      // Chatter about other things is no progress, however much of it comes.
      throw ServiceFailure("it did not report the end in time");
    }
  }
}

}  // namespace ravelinox
