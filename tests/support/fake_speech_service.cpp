#include "support/fake_speech_service.hpp"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <utility>

namespace ravelinox::testing {

FakeSpeechService::FakeSpeechService(const std::string& socket_path, SpeechScript script)
    : script_(std::move(script)), listener_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, socket_path.c_str(), sizeof address.sun_path - 1);
  (void)bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  (void)listen(listener_, 1);
  thread_ = std::thread([this] { serve(); });
}

FakeSpeechService::~FakeSpeechService() { (void)lines(); }

const std::vector<std::string>& FakeSpeechService::lines() {
  if (thread_.joinable()) {
    (void)shutdown(listener_, SHUT_RDWR);  // ends the wait for a client that never came
    thread_.join();
    (void)close(listener_);
  }
  return lines_;
}

void FakeSpeechService::serve() {
  const int connection = accept(listener_, nullptr, nullptr);
  std::string line;
  for (char letter = 0; recv(connection, &letter, 1, 0) == 1;) {
    if (letter != '\n') {
      line += letter;
      continue;
    }
    if (line.ends_with('\r')) line.pop_back();
    lines_.push_back(line);
    const std::string answer = answer_to(std::exchange(line, {}));
    if (answer == SpeechScript::hang_up) break;
    (void)send(connection, answer.data(), answer.size(), MSG_NOSIGNAL);
  }
  if (connection >= 0) (void)close(connection);
}

std::string FakeSpeechService::answer_to(const std::string& line) {
  if (receiving_text_) {
    receiving_text_ = line != ".";
    return receiving_text_ ? "" : script_.text;
  }
  receiving_text_ = line == "SPEAK";
  if (receiving_text_) return script_.speak;
  if (line.starts_with("SET SELF CLIENT_NAME ")) return script_.client_name;
  if (line == "SET SELF NOTIFICATION ALL ON") return script_.notification;
  if (line == "SET SELF SSML_MODE OFF") return "219 OK SSML MODE SET\r\n";
  return line == "SET SELF PRIORITY MESSAGE" ? "202 OK PRIORITY SET\r\n" : "";
}

}  // namespace ravelinox::testing
