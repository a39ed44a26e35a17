#pragma once

#include <cstdint>
#include <functional>
#include <queue>
#include <vector>

#include "host/civil_time.hpp"

namespace ravelinox::host {

/// A train's next movement and when it will really happen.
struct Due {
  Timestamp time = 0;
  std::int32_t train = 0;

  /// By time; trains that move at the same second in the order of their numbers, so that a run
  /// can be repeated.
  friend auto operator<=>(const Due&, const Due&) = default;
};

/// The movements that wait for their moment, at most one for each train: a train's next but one
/// is known only when its next has been recorded.
using DueQueue = std::priority_queue<Due, std::vector<Due>, std::greater<>>;

}  // namespace ravelinox::host
