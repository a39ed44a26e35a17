// Reproducible randomness. The engine's output is fixed by the language's standard; its
// distributions are not, so numbers are made from the raw bits here.
#include "host/seeded_random.hpp"

namespace ravelinox::host {
namespace {

constexpr std::uint64_t other_sequence = 0x9E3779B97F4A7C15;

}  // namespace

std::uint32_t fresh_seed() { return std::random_device{}() % 1'000'000; }

float SeededRandom::draw() {
  // A single-precision number holds 24 bits: with more, the largest would round up to 1.
  return static_cast<float>(engine_() >> 40) * 0x1p-24F;
}

Deviations::Deviations(std::uint32_t seed, std::int32_t spread)
    : engine_(seed ^ other_sequence), spread_(spread) {}

std::int32_t Deviations::next() { return below_spread() - below_spread(); }

std::int32_t Deviations::below_spread() {
  return static_cast<std::int32_t>(engine_() % (static_cast<std::uint64_t>(spread_) + 1));
}

}  // namespace ravelinox::host
