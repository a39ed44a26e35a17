#include "host/seeded_random.hpp"

#include <gtest/gtest.h>

#include <set>

namespace ravelinox::host {
namespace {

TEST(SeededRandom, TheSeedDecidesWhateverIsReseeded) {
  SeededRandom left_alone(7);
  SeededRandom reseeded(7);
  for (int i = 0; i < 1000; ++i) {
    const float drawn = left_alone.draw();
    EXPECT_TRUE(drawn >= 0 && drawn < 1) << drawn;
    reseeded.reseed();
    EXPECT_EQ(reseeded.draw(), drawn);
  }
  // Fixed by the engine's definition, so the same on every machine.
  EXPECT_EQ(SeededRandom(1).draw(), 0x2245BDp-24F);
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
