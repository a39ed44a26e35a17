// A speech service on a private socket that answers by a script and remembers what it was sent.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace ravelinox::testing {

/// The answer to a line that begins so, where it is not the usual one; the end of a text is ".".
/// An empty answer is none at all, and `hang_up` closes the connection instead.
using SpeechScript = std::map<std::string, std::string>;
constexpr const char* hang_up = "<hang up>";

class FakeSpeechService {
 public:
  FakeSpeechService(const std::string& socket_path, SpeechScript script)
      : script_(std::move(script)), listener_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    script_.insert({{"SET SELF CLIENT_NAME", "208 OK CLIENT NAME SET\r\n"},
                    {"SET SELF NOTIFICATION ALL ON", "220 OK NOTIFICATION SET\r\n"},
                    {"SET SELF SSML_MODE OFF", "219 OK SSML MODE SET\r\n"},
                    {"SET SELF PRIORITY MESSAGE", "202 OK PRIORITY SET\r\n"},
                    {"SPEAK", "230 OK RECEIVING DATA\r\n"},
                    {".", "225-7\r\n225 OK MESSAGE QUEUED\r\n702-7\r\n702-1\r\n702 END\r\n"}});
    sockaddr_un address{AF_UNIX, {}};
    socket_path.copy(address.sun_path, sizeof address.sun_path - 1);
    (void)bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    (void)listen(listener_, 1);
    thread_ = std::thread([this] { serve(); });
  }
  FakeSpeechService(const FakeSpeechService&) = delete;
  FakeSpeechService& operator=(const FakeSpeechService&) = delete;
  ~FakeSpeechService() { (void)lines(); }

  /// The lines of the one connection, complete once the client has closed it. Waits for that.
  [[nodiscard]] const std::vector<std::string>& lines() {
    if (thread_.joinable()) {
      (void)shutdown(listener_, SHUT_RDWR);  // ends the wait for a client that never came
      thread_.join();
      (void)close(listener_);
    }
    return lines_;
  }

 private:
  void serve() {
    const int connection = accept(listener_, nullptr, nullptr);
    bool in_text = false;
    std::string line;
    for (char letter = 0; recv(connection, &letter, 1, 0) == 1;) {
      line += letter;
      if (!line.ends_with("\r\n")) continue;
      line.resize(line.size() - 2);
      lines_.push_back(line);
      in_text = in_text && line != ".";
      const std::string answer = in_text ? "" : answer_to(line);
      if (answer == hang_up) break;
      (void)send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
      in_text = in_text || line == "SPEAK";
      line.clear();
    }
    if (connection >= 0) (void)close(connection);
  }

  [[nodiscard]] std::string answer_to(const std::string& line) const {
    for (const auto& [opening, answer] : script_) {
      if (line.starts_with(opening)) return answer;
    }
    return "";
  }

  SpeechScript script_;
  int listener_;
  std::vector<std::string> lines_;
  std::thread thread_;
};

}  // namespace ravelinox::testing
