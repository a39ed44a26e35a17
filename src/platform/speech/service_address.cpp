// The address is the service's convention, shared by all its clients, and so are the variables of
// the environment that shape it.
#include "platform/speech/service_address.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/un.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "platform/number_text.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox {

namespace {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

/// In the user's runtime folder, or where the service puts its socket when there is none.
std::string usual_socket_path() {
  std::string folder = variable("XDG_RUNTIME_DIR");
  if (folder.empty()) folder = variable("XDG_CACHE_HOME");
  if (folder.empty()) folder = variable("HOME") + "/.cache";
  return folder + "/speech-dispatcher/speechd.sock";
}

std::optional<ServiceAddress> local_socket(const std::string& path) {
  sockaddr_un address{};
  if (path.size() >= sizeof address.sun_path) return std::nullopt;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  ServiceAddress result{{}, sizeof address, path, path};
  std::memcpy(&result.address, &address, sizeof address);
  return result;
}

std::optional<ServiceAddress> port(const std::string& host, std::string_view number) {
  constexpr double highest = 65535;
  const std::optional<double> value = parse_number(number);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  if (!value || *value < 1 || *value > highest) return std::nullopt;
  address.sin_port = htons(static_cast<std::uint16_t>(*value));
  const std::string numeric = host == "localhost" ? "127.0.0.1" : host;
  if (inet_pton(AF_INET, numeric.c_str(), &address.sin_addr) != 1) return std::nullopt;
  ServiceAddress result{{}, sizeof address, host + ":" + std::string(number), {}};
  std::memcpy(&result.address, &address, sizeof address);
  return result;
}

/// What precedes the first ":", and what follows it.
std::pair<std::string_view, std::string_view> split(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return {text, {}};
  return {text.substr(0, colon), text.substr(colon + 1)};
}

std::string or_else(std::string_view text, const std::string& otherwise) {
  return text.empty() ? otherwise : std::string(text);
}

}  // namespace

ServiceAddress parse_service_address(std::string_view setting) {
  const auto [method, place] = split(setting);
  std::optional<ServiceAddress> address;
  if (method.empty() || method == "unix_socket") {
    address = local_socket(or_else(place, usual_socket_path()));
  } else if (method == "inet_socket") {
    const auto [host, number] = split(place);
    address = port(or_else(host, "127.0.0.1"), or_else(number, "6560"));
  }
  if (!address) {
    throw Error(ErrorNumber::cannot_create_object,
                "The speech service's address \"" + std::string(setting) +
                    "\" cannot be used: it is unix_socket:path or inet_socket:number:port, the "
                    "path short enough for a socket.");
  }
  return *address;
}

}  // namespace ravelinox
