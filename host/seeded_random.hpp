#pragma once

#include <cstdint>
#include <random>

#include "ravelinox/platform.hpp"

namespace ravelinox::host {

/// A seed for a run that nobody asked to repeat; short enough to be typed again.
[[nodiscard]] std::uint32_t fresh_seed();

/// The component's random numbers, the same for the same seed on every machine.
class SeededRandom : public RandomSource {
 public:
  explicit SeededRandom(std::uint32_t seed) : engine_(seed) {}
  [[nodiscard]] float draw() override;
  void reseed() override {}  // one sequence for the whole run: that is what the seed is for

 private:
  std::mt19937_64 engine_;
};

/// By how much the world outside differs from what the component expects. A sequence of its own,
/// so that the component's draws are the same with and without it.
class Deviations {
 public:
  /// Seconds between -spread and +spread, small ones more often.
  Deviations(std::uint32_t seed, std::int32_t spread);
  [[nodiscard]] std::int32_t next();

 private:
  [[nodiscard]] std::int32_t below_spread();

  std::mt19937_64 engine_;
  std::int32_t spread_;
};

}  // namespace ravelinox::host
