// A connection on which both sides send lines. No call waits past its deadline, dies of a signal
// when the other side is gone, or is disturbed by one that the host handles.
#pragma once

#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/speech/service_address.hpp"

namespace ravelinox {

using Deadline = std::chrono::steady_clock::time_point;

[[nodiscard]] inline Deadline deadline_in(std::chrono::milliseconds limit) {
  return std::chrono::steady_clock::now() + limit;
}

/// Why the service did not do what it was asked, as a sentence about it without a full stop.
class ServiceFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// No service runs at the address; one may be started.
class NobodyListens : public ServiceFailure {
 public:
  using ServiceFailure::ServiceFailure;
};

class LineChannel {
 public:
  /// Connects.
  LineChannel(const ServiceAddress& address, Deadline deadline);
  LineChannel(LineChannel&& other) noexcept;
  LineChannel& operator=(LineChannel&&) = delete;
  ~LineChannel();

  void send(std::string_view text, Deadline deadline);

  /// The next line without its end (LF or CR LF). A line of more than 4096 bytes is a failure.
  [[nodiscard]] std::string receive_line(Deadline deadline);

  /// Sends what can be sent at once, then no more; the other side sees the end. Never fails.
  void part_with(std::string_view last_words) noexcept;

 private:
  int socket_;
  std::string received_;
};

}  // namespace ravelinox
