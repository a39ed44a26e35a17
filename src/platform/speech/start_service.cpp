// Starts the desktop's speech service in a session of its own, with none of the host's open files
// and signal settings, and waits for the starter to end, which a service that goes on in the
// background does at once.
#include "platform/speech/start_service.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

extern char** environ;

namespace ravelinox {

namespace {

/// The null device as the three standard streams, everything else closed.
class Descriptors {
 public:
  Descriptors() {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
  }
  Descriptors(const Descriptors&) = delete;
  Descriptors& operator=(const Descriptors&) = delete;
  ~Descriptors() { posix_spawn_file_actions_destroy(&actions_); }
  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// A session of its own, so that a key pressed on the host's terminal does not end it, and the
/// default for every signal.
class Attributes {
 public:
  Attributes() {
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setflags(&attributes_,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }
  [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

pid_t run(const std::string& program, const std::string& socket_path) {
  std::array<std::string, 6> words{program,       "--spawn",       "--communication-method",
                                   "unix_socket", "--socket-path", socket_path};
  std::array<char*, words.size() + 1> arguments{};
  for (std::size_t at = 0; at < words.size(); ++at) arguments.at(at) = words.at(at).data();
  pid_t process = 0;
  const int code = posix_spawnp(&process, program.c_str(), Descriptors().get(), Attributes().get(),
                                arguments.data(), environ);
  if (code != 0) throw ServiceFailure(program + " cannot be started: " + std::strerror(code));
  return process;
}

/// Its status once it has ended. A host that ignores or collects its children itself leaves none
/// to ask for; that counts as success.
int status_at_end(pid_t process, const std::string& program, Deadline deadline) {
  int status = 0;
  for (;;) {
    const pid_t ended = waitpid(process, &status, WNOHANG);
    if (ended == process) return status;
    if (ended < 0 && errno != EINTR) return 0;
    if (std::chrono::steady_clock::now() >= deadline) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  (void)kill(process, SIGKILL);
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  throw ServiceFailure(program + " did not start the service in time");
}

}  // namespace

void start_service(const std::string& program, const std::string& socket_path, Deadline deadline) {
  if (status_at_end(run(program, socket_path), program, deadline) != 0) {
    throw ServiceFailure(program + " could not start the service");
  }
}

}  // namespace ravelinox
