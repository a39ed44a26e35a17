// A speech service on a private socket that answers by a script and remembers what it was sent.
#pragma once

#include <string>
#include <thread>
#include <vector>

namespace ravelinox::testing {

/// What it answers; an empty answer is none at all, and `hang_up` closes the connection instead.
struct SpeechScript {
  static constexpr const char* hang_up = "<hang up>";

  std::string client_name = "208 OK CLIENT NAME SET\r\n";
  std::string notification = "220 OK NOTIFICATION SET\r\n";
  std::string speak = "230 OK RECEIVING DATA\r\n";
  std::string text =
      "225-7\r\n225 OK MESSAGE QUEUED\r\n701-7\r\n701-1\r\n701 BEGIN\r\n"
      "702-7\r\n702-1\r\n702 END\r\n";
};

class FakeSpeechService {
 public:
  FakeSpeechService(const std::string& socket_path, SpeechScript script);
  FakeSpeechService(const FakeSpeechService&) = delete;
  FakeSpeechService& operator=(const FakeSpeechService&) = delete;
  ~FakeSpeechService();

  /// The lines of the one connection, complete once the client has closed it. Waits for that.
  [[nodiscard]] const std::vector<std::string>& lines();

 private:
  void serve();
  [[nodiscard]] std::string answer_to(const std::string& line);

  SpeechScript script_;
  int listener_;
  bool receiving_text_ = false;
  std::vector<std::string> lines_;
  std::thread thread_;
};

}  // namespace ravelinox::testing
