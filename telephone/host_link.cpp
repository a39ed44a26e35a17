// A byte on the socket says that the feed has grown; the end of the socket, that the host is gone.
#include "host_link.hpp"

#include <sys/socket.h>

#include <QCoreApplication>
#include <array>
#include <cerrno>
#include <cstdlib>

namespace ravelinox {

HostLink::HostLink(int socket, int feed)
    : socket_(socket),
      feed_(feed),
      panel_([this] { answer(); }),
      arrivals_(socket, QSocketNotifier::Read) {
  QObject::connect(&arrivals_, &QSocketNotifier::activated, &panel_, [this] { receive(); });
}

/// The bytes first, then the feed: a record written in between is read now or has a byte of its
/// own. Many messages at once are shown, and take the focus, as one.
void HostLink::receive() {
  std::array<char, 4096> bytes{};
  const ssize_t received = recv(socket_.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (received > 0) {
    if (feed_.update(view_)) panel_.present(view_);
  } else if (received == 0 || (errno != EAGAIN && errno != EINTR)) {
    arrivals_.setEnabled(false);
    QCoreApplication::exit(EXIT_FAILURE);
  }
}

void HostLink::answer() {
  arrivals_.setEnabled(false);
  [[maybe_unused]] const ssize_t sent = send(socket_.get(), "", 1, MSG_NOSIGNAL);
  QCoreApplication::exit(EXIT_SUCCESS);
}

}  // namespace ravelinox
