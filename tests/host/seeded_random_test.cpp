#include "host/seeded_random.hpp"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace ravelinox::host {
namespace {

std::vector<float> draws(std::uint32_t seed, bool reseeding) {
  SeededRandom source(seed);
  std::vector<float> drawn;
  for (int i = 0; i < 1000; ++i) {
    if (reseeding) source.reseed();
    drawn.push_back(source.draw());
  }
  return drawn;
}

TEST(SeededRandom, TheSeedDecidesWhateverIsReseeded) {
  EXPECT_EQ(draws(7, false), draws(7, true));
  EXPECT_NE(draws(7, false), draws(8, false));
  // Fixed by the engine's definition, so the same on every machine.
  EXPECT_EQ(SeededRandom(1).draw(), 0x2245BDp-24F);
  for (const float drawn : draws(7, false)) EXPECT_TRUE(drawn >= 0 && drawn < 1) << drawn;
}

TEST(Deviations, StayInTheirSpreadOnBothSides) {
  for (const std::int32_t spread : {0, 1, 15}) {
    Deviations deviations(7, spread);
    std::set<std::int32_t> drawn;
    for (int i = 0; i < 10000; ++i) drawn.insert(deviations.next());
    EXPECT_EQ(*drawn.begin(), -spread);
    EXPECT_EQ(*drawn.rbegin(), spread);
  }
}

}  // namespace
}  // namespace ravelinox::host
