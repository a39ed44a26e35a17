#include "platform/speech/speech_service.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/fake_speech_service.hpp"
#include "platform/speech/service_voice.hpp"
#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;
using Failure = std::optional<ErrorNumber>;

/// Long enough never to run out where an answer comes, on the slowest machine.
constexpr SpeechPatience patient{60s, 60s, 60s, 0ms, 1h};
/// Runs out soon where an answer or a start is waited for in vain, and where the end of a text is.
constexpr SpeechPatience hasty{30ms, 30ms, 60s, 0ms, 0ms};
constexpr SpeechPatience hasty_at_the_end{60s, 60s, 30ms, 0ms, 0ms};

constexpr auto no_voice = ErrorNumber::cannot_create_object;

struct Meeting {
  Failure failure;
  Lines heard;
};

/// One voice made by a service of this script, and one text given to it.
Meeting meet(const SpeechScript& script, const std::string& text = "Forlì",
             const SpeechPatience& patience = patient) {
  const TemporaryFolder folder;
  FakeSpeechService fake(folder.file("s"), script);
  SpeechService service(patience, "unix_socket:" + folder.file("s"), "/nowhere/program");
  const Failure failure = error_of([&] { service.voice()->speak(text); });
  return {failure, fake.lines()};
}

TEST(SpeechService, IntroducesItselfAndSpeaks) {
  const Meeting meeting = meet({}, ".È <b>\nl'ora");
  EXPECT_EQ(meeting.failure, std::nullopt);
  EXPECT_EQ(meeting.heard,
            (Lines{"SET SELF CLIENT_NAME " + std::to_string(geteuid()) + ":ravelinox:announcements",
                   "SET SELF NOTIFICATION ALL ON", "SET SELF SSML_MODE OFF",
                   "SET SELF PRIORITY MESSAGE", "SPEAK", "..È <b>", "l'ora", ".", "QUIT"}));
  EXPECT_EQ(meet({}, "").heard.size(), 5U) << "nothing is said for an empty text";
}

TEST(SpeechService, TextsThatWouldEndEarly) {
  for (const auto& [text, message] :
       Table<std::string, std::string>{{".", "..\r\n.\r\n"},
                                       {"a\n.\nb", "a\r\n..\r\nb\r\n.\r\n"},
                                       {"a\r.\r\n\r.b", "a\r\n..\r\n\r\n..b\r\n.\r\n"},
                                       {std::string("a\0b", 3), "a b\r\n.\r\n"}}) {
    EXPECT_EQ(as_message(text), message) << text;
  }
}

TEST(SpeechService, WaitsForTheEndOfItsOwnMessageOrReportsAFailure) {
  const std::string queued = "225-7\r\n225 OK MESSAGE QUEUED\r\n";
  const std::string end = "702-7\r\n702-1\r\n702 END\r\n";
  const std::string others_end = "702-6\r\n702-1\r\n702 END\r\n";
  const std::string paused = "704-7\r\n704-1\r\n704 PAUSED\r\n705-7\r\n705-1\r\n705 RESUMED\r\n";
  constexpr auto not_spoken = ErrorNumber::speech_failure;
  for (const auto& [line, answer, failure, patience] :
       Table<const char*, std::string, Failure, SpeechPatience>{
           {".", queued + others_end + paused + end, {}, patient},
           {".", "701-7\r\n701-1\r\n701 BEGIN\r\n" + end + queued, {}, patient},
           {".", "227 OK MESSAGE CANCELED\r\n", {}, patient},
           {".", queued + others_end, not_spoken, hasty_at_the_end},
           {".", hang_up, not_spoken, patient},
           {".", "what?\r\n", not_spoken, patient},
           {".", std::string(5000, '2'), not_spoken, patient},
           {".", "305 ERR ENCODING\r\n", not_spoken, patient},
           {"SPEAK", "302 ERR\r\n", not_spoken, patient},
           {"SET SELF CLIENT_NAME", "", no_voice, hasty},  // accepts and is silent
           {"SET SELF CLIENT_NAME", hang_up, no_voice, patient},
           {"SET SELF CLIENT_NAME", "220 smtp\r\n", no_voice, patient},
           {"SET SELF NOTIFICATION ALL ON", "412 ERR\r\n", no_voice, patient}}) {
    const Meeting meeting = meet({{line, answer}}, "Forlì", patience);
    EXPECT_EQ(meeting.failure, failure) << line << answer;
    if (answer != queued + others_end) continue;
    EXPECT_EQ(Lines(meeting.heard.end() - 2, meeting.heard.end()), (Lines{"CANCEL SELF", "QUIT"}))
        << "what it gives up it withdraws";
  }
}

/// A program in place of the service's, which tells with what it was run and what it may use.
struct Starter {
  explicit Starter(const char* body) {
    std::ofstream(path) << "#!/bin/sh\necho \"$@\" >>\"$0.runs\"\nls /proc/self/fd >\"$0.open\"\n"
                        << body;
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }
  TemporaryFolder folder;
  std::string path = folder.file("program");
  std::string socket = folder.file("s");
};

TEST(SpeechService, AFailedStartIsRememberedForAWhile) {
  const Starter starter("exit 1");
  const int inheritable = fcntl(STDERR_FILENO, F_DUPFD, 200);
  SpeechService service(patient, "unix_socket:" + starter.socket, starter.path);
  EXPECT_EQ(error_of([&] { return service.voice(); }), no_voice);
  (void)close(inheritable);
  EXPECT_EQ(error_of([&] { return service.voice(); }), no_voice);
  EXPECT_EQ(starter.folder.bytes("program.runs"),
            "--spawn --communication-method unix_socket --socket-path " + starter.socket + "\n");
  const std::string descriptors = starter.folder.bytes("program.open");
  EXPECT_TRUE(descriptors.starts_with("0\n")) << descriptors;
  EXPECT_EQ(descriptors.find(std::to_string(inheritable)), std::string::npos) << descriptors;
  // One that somebody else has started meanwhile is used all the same.
  FakeSpeechService fake(starter.socket, {});
  EXPECT_EQ(error_of([&] { return service.voice(); }), std::nullopt);
}

TEST(SpeechService, AStartThatHangsOrIsMissingLeavesNothingBehind) {
  const Starter hanging("exec sleep 1000");
  for (const std::string& program : {hanging.path, std::string("/nowhere/program")}) {
    SpeechService service(hasty, "unix_socket:" + hanging.socket, program);
    EXPECT_EQ(error_of([&] { return service.voice(); }), no_voice);
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
}

TEST(ServiceAddress, FollowsTheServicesOwnSetting) {
  for (const auto& [setting, name] :
       Table<std::string, const char*>{{"unix_socket:/run/x", "/run/x"},
                                       {"inet_socket:localhost", "localhost:6560"},
                                       {"inet_socket:10.0.0.1:7000", "10.0.0.1:7000"},
                                       {"tcp:1", ""},
                                       {"inet_socket:host.example:1", ""},
                                       {"inet_socket:127.0.0.1:65536", ""},
                                       {"unix_socket:/" + std::string(200, 'x'), ""}}) {
    std::string parsed;
    const auto error = error_of([&] { parsed = parse_service_address(setting).name; });
    EXPECT_EQ(parsed, name) << setting;
    EXPECT_EQ(error.has_value(), parsed.empty()) << setting;
  }
}

}  // namespace
}  // namespace ravelinox::testing
