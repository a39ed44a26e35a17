// Where the desktop's speech service listens.
#pragma once

#include <sys/socket.h>

#include <string>
#include <string_view>

namespace ravelinox {

struct ServiceAddress {
  sockaddr_storage address{};
  socklen_t length = 0;
  std::string name;         ///< for people
  std::string socket_path;  ///< of a local socket; empty for a port, where we start no service
};

/// The meaning of the service's own setting: "unix_socket[:path]" or "inet_socket[:host[:port]]",
/// empty for a local socket at the service's usual place. The host is a number or "localhost": a
/// name would need a look-up, which may wait for ever. 429 for anything else.
[[nodiscard]] ServiceAddress parse_service_address(std::string_view setting);

}  // namespace ravelinox
