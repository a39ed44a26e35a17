// The component's side of the telephone's program, against programs that misbehave in every way.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <fstream>

#include "operator/telephone_feed.hpp"
#include "ravelinox/platform.hpp"
#include "support/processes.hpp"
#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

constexpr std::chrono::hours never_again{1};

/// A desk whose window program is a script: descriptor 3 is its socket, 4 its feed.
struct Desk {
  explicit Desk(const std::string& script, std::chrono::milliseconds retry_after = {}) {
    if (!script.empty()) {
      std::ofstream(program) << script;
      std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    platform().telephone_window = desktop_telephone(program, retry_after);
  }

  /// Gives the form a message, and waits for the program that answers it to end.
  void message_to_its_end(const std::string& text) {
    form.RiceviComunicazione("A", text);
    wait_for_end(children().at(0));
  }
  /// What the program copied from its feed into the file "told".
  [[nodiscard]] std::string told() const {
    TelephoneView view;
    FeedReader reader(open(folder.file("told").c_str(), O_RDONLY | O_CLOEXEC));
    return reader.update(view) ? view.caller + "|" + view.messages : "nothing";
  }

  TemporaryFolder folder;
  std::string program = folder.file("program");
  Environment display{"QT_QPA_PLATFORM", "offscreen"};
  PlatformOverride surroundings{platform()};
  TelephoneForm form;
};

TEST(DesktopTelephone, NoFaultOfTheProgramReachesTheHost) {
  const char* const faults[] = {
      "",                                         // missing
      "#!/nowhere/sh\n",                          // cannot be run
      "#!/bin/sh\nexit 1\n",                      // dies at once
      "#!/bin/sh\nkill -STOP $$\n",               // is stopped
      "#!/bin/sh\nexec sleep 1000\n",             // never reads
      "#!/bin/sh\nexec 3>&-\nexec sleep 1000\n",  // closes its socket but goes on
  };
  const std::string text(2000, 'x');  // together more than a socket's buffer holds
  const std::size_t descriptors = open_descriptors();
  for (const char* script : faults) {
    {
      Desk desk(script, never_again);
      for (int message = 0; message < 500; ++message) desk.form.RiceviComunicazione("A", text);
      EXPECT_TRUE(desk.form.is_open()) << script;
      EXPECT_EQ(desk.form.view().messages.size(), 500 * (text.size() + 2) - 2) << script;
      EXPECT_LE(children().size(), 1U) << script;
    }
    EXPECT_TRUE(children().empty()) << script;
    EXPECT_EQ(open_descriptors(), descriptors) << script;
  }
}

TEST(DesktopTelephone, AProgramThatEndedIsStartedAgainWithAllThatIsUnanswered) {
  Desk desk("#!/bin/sh\nhead -c 1 <&3\ncat <&4 >${0%/*}/told\n");
  desk.message_to_its_end("one");
  EXPECT_EQ(desk.told(), "A|one");
  desk.message_to_its_end("two");
  EXPECT_EQ(desk.told(), "A|one\r\ntwo");
  EXPECT_TRUE(desk.form.is_open()) << "an end is no answer";
  EXPECT_TRUE(children().empty()) << "collected when noticed";
}

TEST(DesktopTelephone, AProgramThatDiesAtOnceIsNotStartedForEveryMessage) {
  Desk desk("#!/bin/sh\nexec sleep 1000", never_again);
  desk.form.RiceviComunicazione("A", "one");
  kill(children().at(0), SIGKILL);
  wait_for_end(children().at(0));
  desk.form.RiceviComunicazione("A", "two");
  EXPECT_TRUE(children().empty());
}

TEST(DesktopTelephone, TheAnswerCountsWhoeverCollectsTheProgram) {
  void (*const hosts[])() = {
      [] {},                             // leaves it
      [] { waitpid(-1, nullptr, 0); },   // collects all its children
      [] { signal(SIGCHLD, SIG_IGN); },  // ignores their end
  };
  for (const auto& host : hosts) {
    Desk desk("#!/bin/sh\nhead -c 1 <&3\ncat <&4 >${0%/*}/told\nprintf . >&3\n");
    desk.message_to_its_end("one");
    host();
    EXPECT_FALSE(desk.form.is_open()) << &host - hosts;
    desk.message_to_its_end("two");
    signal(SIGCHLD, SIG_DFL);
    EXPECT_EQ(desk.told(), "A|two") << &host - hosts;
    desk.form.close();
    EXPECT_TRUE(children().empty()) << &host - hosts;
  }
}

TEST(DesktopTelephone, TheProgramInheritsNothingFromTheHost) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);  // open across an exec, as a careless host's files are
  sigset_t blocked;
  sigset_t before;
  sigfillset(&blocked);
  sigprocmask(SIG_BLOCK, &blocked, &before);
  signal(SIGHUP, SIG_IGN);

  Desk desk("#!/bin/sh\nexec sleep 1000");
  desk.form.RiceviComunicazione("A", "one");
  const pid_t program = children().at(0);
  EXPECT_EQ(getpgid(program), program);
  close(ends[1]);
  pollfd reader{ends[0], POLLIN, 0};
  EXPECT_EQ(poll(&reader, 1, 0), 1);
  EXPECT_TRUE(reader.revents & POLLHUP);
  std::ifstream status("/proc/" + std::to_string(program) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (!line.starts_with("SigBlk") && !line.starts_with("SigIgn")) continue;
    const unsigned long signals = std::stoul(line.substr(line.find('\t')), nullptr, 16);
    EXPECT_EQ(signals & 0x7FFFFFFF, 0U) << line;  // above lie the C library's own
  }

  close(ends[0]);
  signal(SIGHUP, SIG_DFL);
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

TEST(DesktopTelephone, IsFoundNearTheComponentAndNeedsADisplay) {
  const TemporaryFolder root;
  std::filesystem::create_directories(root.path() / "lib/arch");
  const Environment none[] = {
      {"DISPLAY", nullptr}, {"WAYLAND_DISPLAY", nullptr}, {"QT_QPA_PLATFORM", nullptr}};
  const auto found_from = [&](const char* folder, const char* variable, const char* value) {
    const Environment display(variable, value);
    return desktop_telephone(root.file(folder))() != nullptr;
  };
  for (const char* place : {"lib", "bin", "libexec"}) {
    std::filesystem::create_directories(root.path() / place);
    const std::filesystem::path program = root.path() / place / "ravelinox-telephone";
    std::ofstream(program).close();
    EXPECT_FALSE(found_from("lib", "DISPLAY", "x")) << "not a program yet";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
      EXPECT_TRUE(found_from("lib", variable, "x")) << place << " with " << variable;
      EXPECT_FALSE(found_from("lib", variable, "")) << place << " with " << variable;
    }
    EXPECT_EQ(found_from("lib/arch", "DISPLAY", "x"), std::string(place) == "libexec") << place;
    std::filesystem::remove(program);
  }
}

}  // namespace
}  // namespace ravelinox::testing
