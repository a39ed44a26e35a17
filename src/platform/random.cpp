// The default random source. Each thread has a sequence of its own, so objects on different
// threads never meet. Reseeding happens thousands of times a second: the clock's reading is mixed
// with a count of reseedings and scrambled, so neighbouring seeds share nothing.
#include "platform/random.hpp"

#include <chrono>
#include <cstdint>
#include <memory>

#include "platform/defaults.hpp"

namespace ravelinox {

namespace {

/// One step of the splitmix64 generator: a counter whose every value is well mixed.
std::uint64_t next(std::uint64_t& state) {
  std::uint64_t mixed = (state += 0x9E3779B97F4A7C15U);
  mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
  return mixed ^ (mixed >> 31U);
}

std::uint64_t clock_reading() {
  return static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
}

struct Sequence {
  // The address tells threads apart that start in the same tick.
  std::uint64_t reseedings = reinterpret_cast<std::uintptr_t>(this);  // NOLINT(*-reinterpret-cast)
  std::uint64_t state = clock_reading();
};

Sequence& sequence() {
  thread_local Sequence of_thread;
  return of_thread;
}

class ClockSeededSource final : public RandomSource {
 public:
  float draw() override {
    constexpr int significant_bits = 24;  // all that single precision holds below 1
    const std::uint64_t top = next(sequence().state) >> (64U - significant_bits);
    return static_cast<float>(top) / static_cast<float>(1U << significant_bits);
  }

  void reseed() override {
    Sequence& own = sequence();
    own.state = clock_reading() ^ next(own.reseedings);
  }
};

}  // namespace

std::shared_ptr<RandomSource> make_clock_seeded_source() {
  return std::make_shared<ClockSeededSource>();
}

}  // namespace ravelinox
