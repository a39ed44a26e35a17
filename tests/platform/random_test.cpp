#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <utility>

#include "platform/defaults.hpp"

namespace ravelinox {
namespace {

TEST(Random, FirstDrawsAfterReseedingAreUniform) {
  const auto source = make_clock_seeded_source();
  constexpr int draws = 64000;
  std::array<int, 16> counts{};
  float before = 0;
  int neighbours = 0;  // draws in the same sixteenth as the one before
  for (int each = 0; each < draws; ++each) {
    source->reseed();
    const float drawn = source->draw();
    ASSERT_GE(drawn, 0.0F);
    ASSERT_LT(drawn, 1.0F);
    ++counts.at(static_cast<std::size_t>(drawn * 16));
    neighbours += std::floor(drawn * 16) == std::floor(std::exchange(before, drawn) * 16) ? 1 : 0;
  }
  // Each of the sixteen holds 4000, give or take six standard deviations.
  for (const int count : counts) EXPECT_NEAR(count, 4000, 400);
  EXPECT_NEAR(neighbours, 4000, 400);
}

}  // namespace
}  // namespace ravelinox
