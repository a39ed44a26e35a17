#include "platform/speech/speech_service.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/speech/service_voice.hpp"
#include "support/fake_speech_service.hpp"
#include "support/station.hpp"

namespace ravelinox {
namespace {

using namespace std::chrono_literals;
using testing::error_of;
using testing::FakeSpeechService;
using testing::SpeechScript;
using testing::Table;
using testing::TemporaryFolder;
using Lines = std::vector<std::string>;

/// Long enough never to run out where an answer comes, on the slowest machine.
constexpr SpeechPatience patient{60s, 60s, 60s, 0ms, 0ms};

constexpr auto no_voice = ErrorNumber::cannot_create_object;
constexpr auto not_spoken = ErrorNumber::speech_failure;

struct Meeting {
  std::optional<ErrorNumber> making;
  std::optional<ErrorNumber> speaking;
  Lines heard;
};

/// One voice made by a service of this script, and one text given to it.
Meeting meet(const SpeechScript& script, const std::string& text = "Forlì",
             const SpeechPatience& patience = patient) {
  const TemporaryFolder folder;
  FakeSpeechService fake(folder.file("s"), script);
  SpeechService service(patience, "unix_socket:" + folder.file("s"), "/nowhere/program");
  std::unique_ptr<Voice> voice;
  Meeting result;
  result.making = error_of([&] { voice = service.voice(); });
  if (voice) result.speaking = error_of([&] { voice->speak(text); });
  voice.reset();
  result.heard = fake.lines();
  return result;
}

TEST(SpeechService, SpeaksATextAsItStands) {
  const Meeting meeting = meet({}, ".È l'ora <b> & \"4\"\n..\r\nfine");
  EXPECT_EQ(meeting.speaking, std::nullopt);
  EXPECT_EQ(
      meeting.heard,
      (Lines{"SET SELF CLIENT_NAME " + std::to_string(geteuid()) + ":ravelinox:announcements",
             "SET SELF NOTIFICATION ALL ON", "SET SELF SSML_MODE OFF", "SET SELF PRIORITY MESSAGE",
             "SPEAK", "..È l'ora <b> & \"4\"", "...", "fine", ".", "QUIT"}));
  EXPECT_EQ(meet({}, "").heard.size(), 5U) << "nothing is said for an empty text";
}

TEST(SpeechService, TextsThatWouldEndEarly) {
  for (const auto& [text, message] :
       Table<std::string, std::string>{{"a", "a\r\n.\r\n"},
                                       {".", "..\r\n.\r\n"},
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
  const std::string hang_up = SpeechScript::hang_up;
  SpeechPatience hasty = patient;
  hasty.progress = 30ms;
  for (const auto& [answer, spoken, patience] : Table<std::string, bool, SpeechPatience>{
           {queued + others_end + end, true, patient},
           {"701-7\r\n701-1\r\n701 BEGIN\r\n" + end + queued, true, patient},
           {queued + "704-7\r\n704-1\r\n704 PAUSED\r\n705-7\r\n705-1\r\n705 RESUMED\r\n" + end,
            true, patient},
           {queued + "700-7\r\n700-1\r\n700-mark\r\n700 INDEX MARK\r\n" + end, true, patient},
           {"227 OK MESSAGE CANCELED\r\n", true, patient},
           {queued, false, hasty},  // never ends
           {hang_up, false, patient},
           {"what?\r\n", false, patient},
           {std::string(5000, '2'), false, patient},
           {"305 ERR ENCODING\r\n", false, patient}}) {
    SpeechScript script;
    script.text = answer;
    const Meeting meeting = meet(script, "Forlì", patience);
    EXPECT_EQ(meeting.making, std::nullopt) << answer;
    EXPECT_EQ(meeting.speaking, spoken ? std::nullopt : std::optional(not_spoken)) << answer;
    if (answer != queued) continue;
    EXPECT_EQ(Lines(meeting.heard.end() - 2, meeting.heard.end()), (Lines{"CANCEL SELF", "QUIT"}))
        << "what it gives up it withdraws";
  }
  for (const std::string& refusal : {hang_up, std::string("302 ERR\r\n")}) {
    SpeechScript script;
    script.speak = refusal;
    EXPECT_EQ(meet(script).speaking, not_spoken) << refusal;
  }
}

TEST(SpeechService, GivesNoVoiceOfAServiceThatDoesNotAnswerAsItShould) {
  SpeechPatience hasty = patient;
  hasty.answer = 30ms;
  for (const auto& [client_name, notification, patience] :
       Table<std::string, std::string, SpeechPatience>{{"", "", hasty},  // accepts and is silent
                                                       {SpeechScript::hang_up, "", patient},
                                                       {"220 smtp\r\n", "", patient},
                                                       {"208 OK\r\n", "412 ERR\r\n", patient}}) {
    SpeechScript script;
    script.client_name = client_name;
    script.notification = notification;
    EXPECT_EQ(meet(script, "Forlì", patience).making, no_voice) << client_name << notification;
  }
}

/// A program in place of the service's.
class Starter {
 public:
  explicit Starter(const std::string& body) {
    std::ofstream(path) << "#!/bin/sh\necho \"$*\" >> \"$0.runs\"\n" << body << "\n";
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }
  [[nodiscard]] Lines lines_of(const std::string& suffix) const {
    std::ifstream file(path + suffix);
    Lines lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }
  TemporaryFolder folder;
  std::string path = folder.file("program");
  std::string address = "unix_socket:" + folder.file("s");
};

TEST(SpeechService, AFailedStartIsRememberedForAWhile) {
  const Starter starter("exit 1");
  SpeechPatience patience = patient;
  patience.after_failed_start = 1h;
  SpeechService service(patience, starter.address, starter.path);
  EXPECT_EQ(error_of([&] { return service.voice(); }), no_voice);
  EXPECT_EQ(error_of([&] { return service.voice(); }), no_voice);
  EXPECT_EQ(starter.lines_of(".runs"),
            Lines{"--spawn --communication-method unix_socket --socket-path " +
                  starter.folder.file("s")});
  // One that somebody else has started meanwhile is used all the same.
  FakeSpeechService fake(starter.folder.file("s"), {});
  EXPECT_EQ(error_of([&] { return service.voice(); }), std::nullopt);
}

TEST(SpeechService, AStartThatHangsOrIsMissingLeavesNothingBehind) {
  const Starter hanging("exec sleep 1000");
  SpeechPatience hasty = patient;
  hasty.start = 30ms;
  for (const std::string& program : {hanging.path, std::string("/nowhere/program")}) {
    SpeechService service(hasty, hanging.address, program);
    EXPECT_EQ(error_of([&] { return service.voice(); }), no_voice);
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
}

TEST(SpeechService, AStartedServiceInheritsNoDescriptors) {
  const Starter starter("ls /proc/self/fd > \"$0.open\"; exit 1");
  const int inheritable = fcntl(STDERR_FILENO, F_DUPFD, 200);
  SpeechService service(patient, starter.address, starter.path);
  EXPECT_EQ(error_of([&] { return service.voice(); }), no_voice);
  (void)close(inheritable);
  for (const std::string& descriptor : starter.lines_of(".open")) {
    EXPECT_LT(std::stoi(descriptor), inheritable);
  }
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
}  // namespace ravelinox
