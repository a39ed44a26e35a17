#include "platform/speech/line_channel.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <limits>
#include <thread>
#include <utility>

namespace ravelinox {

namespace {

[[noreturn]] void fail(const std::string& doing, int code) {
  throw ServiceFailure(doing + ": " + std::strerror(code));
}

/// Until the socket is ready or has an end to report.
void wait_until(int socket, short ready, Deadline deadline) {
  for (;;) {
    using std::chrono::milliseconds;
    const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd watched{socket, ready, 0};
    const auto limit =
        std::clamp<milliseconds::rep>(left.count(), 0, std::numeric_limits<int>::max());
    const int found = poll(&watched, 1, static_cast<int>(limit));
    if (found > 0) return;
    if (found == 0) throw ServiceFailure("it did not answer in time");
    if (errno != EINTR) fail("it cannot be waited for", errno);
  }
}

/// The outcome of a connection attempt that goes on in the background; 0 for success.
int outcome(int socket, Deadline deadline) {
  wait_until(socket, POLLOUT, deadline);
  int code = 0;
  socklen_t size = sizeof code;
  return getsockopt(socket, SOL_SOCKET, SO_ERROR, &code, &size) == 0 ? code : errno;
}

void connect_by(int socket, const ServiceAddress& to, Deadline deadline) {
  const auto* address = reinterpret_cast<const sockaddr*>(&to.address);  // NOLINT(*-reinterpret-*)
  int code = connect(socket, address, to.length) == 0 ? 0 : errno;
  // A local service whose queue of callers is full has no event to wait for.
  while (code == EAGAIN && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    code = connect(socket, address, to.length) == 0 ? 0 : errno;
  }
  if (code == EINPROGRESS || code == EINTR) code = outcome(socket, deadline);
  if (code == ENOENT || code == ECONNREFUSED) throw NobodyListens("none runs at " + to.name);
  if (code != 0) fail("it cannot be reached at " + to.name, code);
}

}  // namespace

LineChannel::LineChannel(const ServiceAddress& address, Deadline deadline)
    : socket_(socket(address.address.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
  if (socket_ < 0) fail("no socket can be made", errno);
  try {
    connect_by(socket_, address, deadline);
  } catch (...) {
    (void)close(socket_);
    throw;
  }
}

LineChannel::LineChannel(LineChannel&& other) noexcept
    : socket_(std::exchange(other.socket_, -1)), received_(std::move(other.received_)) {}

LineChannel::~LineChannel() {
  if (socket_ >= 0) (void)close(socket_);
}

void LineChannel::send(std::string_view text, Deadline deadline) {
  while (!text.empty()) {
    const ssize_t sent = ::send(socket_, text.data(), text.size(), MSG_NOSIGNAL);
    if (sent >= 0) {
      text.remove_prefix(static_cast<std::size_t>(sent));
    } else if (errno == EAGAIN) {
      wait_until(socket_, POLLOUT, deadline);
    } else if (errno != EINTR) {
      fail("it cannot be spoken to", errno);
    }
  }
}

std::string LineChannel::receive_line(Deadline deadline) {
  constexpr std::size_t longest = 4096;
  std::size_t end = received_.find('\n');
  while (end == std::string::npos) {
    if (received_.size() > longest) throw ServiceFailure("it sent a line without end");
    wait_until(socket_, POLLIN, deadline);
    std::array<char, 1024> part{};
    const ssize_t count = recv(socket_, part.data(), part.size(), 0);
    if (count == 0) throw ServiceFailure("it closed the connection");
    if (count < 0 && errno != EINTR && errno != EAGAIN) fail("it cannot be heard", errno);
    received_.append(part.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    end = received_.find('\n');
  }
  std::string line = received_.substr(0, end);
  received_.erase(0, end + 1);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

void LineChannel::part_with(std::string_view last_words) noexcept {
  (void)::send(socket_, last_words.data(), last_words.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  (void)shutdown(socket_, SHUT_RDWR);
}

}  // namespace ravelinox
