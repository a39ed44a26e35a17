// The program that shows the operator's telephone. The component starts it with the numbers of two
// inherited descriptors: a socket to the component and the feed of messages.
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "host_link.hpp"

namespace {

/// Nothing of this program may outlast the host, not even when it hangs on a display that does not
/// answer; and the toolkit's way to report a missing display, an abort, must leave no core file.
void leave_nothing_behind() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const rlimit no_core_file{0, 0};
  setrlimit(RLIMIT_CORE, &no_core_file);
}

bool is_open(int descriptor) { return descriptor > 2 && fcntl(descriptor, F_GETFD) >= 0; }

}  // namespace

int main(int argc, char** argv) {
  const int socket = argc == 3 ? std::atoi(argv[1]) : -1;
  const int feed = argc == 3 ? std::atoi(argv[2]) : -1;
  if (!is_open(socket) || !is_open(feed)) {
    std::fputs("ravelinox-telephone is started by the component, with SOCKET FEED.\n", stderr);
    return 2;
  }
  leave_nothing_behind();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);  // the link ends the program and says how
  const ravelinox::HostLink link(socket, feed);
  return QApplication::exec();
}
