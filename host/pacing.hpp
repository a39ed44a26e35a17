#pragma once

#include <chrono>

#include "host/civil_time.hpp"

namespace ravelinox::host {

/// Ties the simulated clock to the real one.
class Pacer {
 public:
  /// `speed` simulated seconds pass in a real one, from now on; 0 is as fast as possible.
  Pacer(Timestamp start, double speed);

  /// Returns at the simulated moment, at once when it has passed or time is not paced. False
  /// when the program was interrupted meanwhile.
  [[nodiscard]] bool wait_until(Timestamp moment) const;

  /// How far the clock may jump without looking jerky: about a fifth of a real second.
  [[nodiscard]] Timestamp longest_step() const;

 private:
  using Clock = std::chrono::steady_clock;

  Clock::time_point real_start_;
  Timestamp start_;
  double speed_;
};

/// Says yes at most once in an interval of real time, the first time at once.
class RealTimeLimit {
 public:
  explicit RealTimeLimit(std::chrono::milliseconds interval) : interval_(interval) {}
  [[nodiscard]] bool due();

 private:
  std::chrono::milliseconds interval_;
  std::chrono::steady_clock::time_point next_{};
};

}  // namespace ravelinox::host
