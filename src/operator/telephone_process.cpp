// A child process inside somebody else's program: it must not disturb the host's signals, children
// or descriptors, nor count on the host leaving ours alone. So the operator's answer comes as a
// byte on the socket, not as an exit status, which a host that collects all its children takes.
#include "operator/telephone_process.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace ravelinox {

namespace {

// Where the program finds its two descriptors; it is told so by its arguments.
constexpr int program_socket = 3;
constexpr int program_feed = 4;

/// What happens in the child between its birth and the program.
class ChildPlan {
 public:
  ChildPlan(int socket, int feed) {
    posix_spawn_file_actions_init(&files_);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      posix_spawn_file_actions_addopen(&files_, standard, "/dev/null", O_RDWR, 0);
    }
    posix_spawn_file_actions_adddup2(&files_, socket, program_socket);
    posix_spawn_file_actions_adddup2(&files_, feed, program_feed);
    posix_spawn_file_actions_addclosefrom_np(&files_, program_feed + 1);

    // A host may block or ignore signals; the program starts with the ordinary ones. An own
    // process group keeps the terminal's Ctrl-C with the host.
    sigset_t signals;
    posix_spawnattr_init(&attributes_);
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawnattr_setflags(
        &attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  ChildPlan(const ChildPlan&) = delete;
  ChildPlan& operator=(const ChildPlan&) = delete;
  ~ChildPlan() {
    posix_spawn_file_actions_destroy(&files_);
    posix_spawnattr_destroy(&attributes_);
  }

  /// The child's number, or -1.
  [[nodiscard]] pid_t run(const std::string& program) const {
    std::string name = program;
    std::string socket = std::to_string(program_socket);
    std::string feed = std::to_string(program_feed);
    const std::array<char*, 4> arguments{name.data(), socket.data(), feed.data(), nullptr};
    pid_t child = -1;
    const int failed =
        posix_spawn(&child, program.c_str(), &files_, &attributes_, arguments.data(), environ);
    return failed == 0 ? child : -1;
  }

 private:
  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
};

/// The same file under a number that no step of the plan overwrites.
Descriptor out_of_the_way(int descriptor) {
  return Descriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, program_feed + 1));
}

}  // namespace

TelephoneProcess::TelephoneProcess(const std::string& program) {
  std::array<int, 2> ends{-1, -1};
  if (!feed_.open() || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
  socket_ = Descriptor(ends[0]);
  const Descriptor other_end(ends[1]);
  const Descriptor its_socket = out_of_the_way(ends[1]);
  const Descriptor its_feed = out_of_the_way(feed_.descriptor());
  if (!its_socket || !its_feed) return;
  child_ = ChildPlan(its_socket.get(), its_feed.get()).run(program);
  if (child_ > 0) state_ = State::running;
}

TelephoneProcess::~TelephoneProcess() { end(); }

TelephoneProcess::State TelephoneProcess::state() {
  if (state_ != State::running) return state_;
  // Asked before the socket is read, so that an answer given just before the end is seen. Both are
  // asked: the host may collect the child, a copy of the host's process may hold its socket open.
  const bool ended = child_ < 0 || reaped();
  char answer = 0;
  const ssize_t received = recv(socket_.get(), &answer, 1, MSG_DONTWAIT);
  if (received == 1) {
    state_ = State::answered;
  } else if (received == 0 || ended || (errno != EAGAIN && errno != EINTR)) {
    end();
  }
  return state_;
}

void TelephoneProcess::tell(const TelephoneView& view) {
  if (state_ != State::running) return;
  if (!feed_.append(view)) {
    end();
    return;
  }
  // A full buffer holds bytes that the program has yet to read; it will find this message then.
  [[maybe_unused]] const ssize_t sent = send(socket_.get(), "", 1, MSG_DONTWAIT | MSG_NOSIGNAL);
}

/// Whether the child has ended, be it collected here or by the host.
bool TelephoneProcess::reaped() noexcept {
  const pid_t collected = waitpid(child_, nullptr, WNOHANG);
  if (collected == 0 || (collected < 0 && errno != ECHILD)) return false;
  child_ = -1;
  return true;
}

void TelephoneProcess::end() noexcept {
  state_ = State::gone;
  socket_ = Descriptor();
  // Only a child that is still ours is killed: not a stranger under a number used again, and not
  // the parent's when this is a copy of the host's process.
  if (child_ < 0 || reaped()) return;
  kill(child_, SIGKILL);
  while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
  }
  child_ = -1;
}

}  // namespace ravelinox
