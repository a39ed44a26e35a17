// Real time against simulated time.
#include "host/pacing.hpp"

#include <algorithm>
#include <limits>
#include <thread>

#include "host/interrupt.hpp"

namespace ravelinox::host {

Pacer::Pacer(Timestamp start, double speed)
    : real_start_(Clock::now()), start_(start), speed_(speed) {}

bool Pacer::wait_until(Timestamp moment) const {
  using namespace std::chrono_literals;
  if (speed_ <= 0) return !interrupted();
  const std::chrono::duration<double> passed((moment - start_) / speed_);
  const auto due = real_start_ + std::chrono::duration_cast<Clock::duration>(passed);
  while (!interrupted()) {
    const auto left = due - Clock::now();
    if (left <= Clock::duration::zero()) return true;
    // Short naps: a signal does not wake a sleeping thread for good.
    std::this_thread::sleep_for(std::min<Clock::duration>(left, 50ms));
  }
  return false;
}

Timestamp Pacer::longest_step() const {
  if (speed_ <= 0) return std::numeric_limits<Timestamp>::max();
  return static_cast<Timestamp>(std::clamp(speed_ / 5, 1.0, double{day}));
}

bool RealTimeLimit::due() {
  const auto now = std::chrono::steady_clock::now();
  if (now < next_) return false;
  next_ = now + interval_;
  return true;
}

}  // namespace ravelinox::host
