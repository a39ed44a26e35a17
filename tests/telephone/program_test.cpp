// The component and its real program together, as far as that goes without a display.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

#include "platform/descriptor.hpp"
#include "ravelinox/platform.hpp"
#include "support/processes.hpp"

namespace ravelinox::testing {
namespace {

/// An X display that takes connections and never answers them.
struct SilentDisplay {
  SilentDisplay() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    do {  // displays count from port 6000
      address.sin_port = htons(static_cast<std::uint16_t>(6000 + ++number));
    } while (bind(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0);
    listen(socket.get(), 1);
  }
  void wait_for_connection() { connection = Descriptor(accept(socket.get(), nullptr, nullptr)); }

  Descriptor socket{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  Descriptor connection;
  int number = 100;
} silent;

struct TelephoneProgram : ::testing::Test {
  TelephoneProgram() {
    platform().telephone_window =
        desktop_telephone(RAVELINOX_TELEPHONE, std::chrono::milliseconds(0));
  }
  PlatformOverride surroundings{platform()};
};

TEST_F(TelephoneProgram, EndsWithItsHost) {
  const std::string silent_display = "127.0.0.1:" + std::to_string(silent.number);
  const Environment display("DISPLAY", silent_display.c_str());
  prctl(PR_SET_CHILD_SUBREAPER, 1);  // a program without its host becomes this process's child
  enum Moment { starting, waiting_for_its_display, stopped };
  for (const Moment moment : {starting, waiting_for_its_display, stopped}) {
    const Environment platform("QT_QPA_PLATFORM", moment == starting ? "offscreen" : "xcb");
    const pid_t host = fork();
    if (host == 0) {
      frmTelefonoINdll().RiceviComunicazione("A", "one");
      if (moment != starting) silent.wait_for_connection();
      if (moment == stopped) kill(children().at(0), SIGSTOP);
      raise(SIGKILL);
    }
    waitpid(host, nullptr, 0);
    const std::vector<pid_t> left = children();
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(waitpid(left[0], nullptr, 0), left[0]);  // or the test's time is up
  }
  prctl(PR_SET_CHILD_SUBREAPER, 0);
}

TEST_F(TelephoneProgram, EndsWithTheThreadThatReceivedTheMessage) {
  const Environment offscreen("QT_QPA_PLATFORM", "offscreen");
  const std::size_t descriptors = open_descriptors();
  std::thread([] {
    frmTelefonoINdll().RiceviComunicazione("A", "one");
    EXPECT_EQ(children().size(), 1U);
  }).join();
  EXPECT_EQ(waitpid(-1, nullptr, 0), -1) << "a child is left";
  EXPECT_EQ(open_descriptors(), descriptors);
}

TEST_F(TelephoneProgram, ADisplayThatIsNotThereLeavesNoCoreFile) {
  const Environment platform("QT_QPA_PLATFORM", "xcb");
  const Environment display("DISPLAY", ":59999");
  TelephoneForm form;
  form.RiceviComunicazione("A", "one");
  siginfo_t end{};
  waitid(P_PID, static_cast<id_t>(children().at(0)), &end, WEXITED | WNOWAIT);
  EXPECT_NE(end.si_code, CLD_DUMPED);
}

}  // namespace
}  // namespace ravelinox::testing
