#include <gtest/gtest.h>

#include "ravelinox/cmdl1.hpp"
#include "ravelinox/platform.hpp"
#include "support/cases.hpp"
#include "support/scripted_random.hpp"

namespace ravelinox::testing {
namespace {

TEST(DelayCauses, TheDrawPicksFromTheTableOfTheClass) {
  for (const auto& [motive, draw, cause] :
       Table<Variant, float, Variant>{{"Guasto", 18.25F / 19.5F, "ML 08"},
                                      {"Guasto", 19.25F / 19.5F, "--"},
                                      {"Ritardo Lieve", 23.5F / 24, "--"},
                                      {"Ritardo Comune", 0.79F, "II 01"},
                                      {"Ritardo Comune", 0.81F, "--"},
                                      {"Ritardo Eventuale", 0.051F, "CF 01"},
                                      {"Ritardo Eventuale", 0.0867F, "II 02"},
                                      {"Ritardo Eventuale", 0.1001F, "--"},
                                      {"ritardo comune", 0, Variant()},
                                      {Variant::null(), 0, Variant()}}) {
    const PlatformOverride scripted(platform());
    const auto random = std::make_shared<ScriptedRandom>(std::vector<float>{draw});
    platform().random = random;
    EXPECT_EQ(cmdl1().CausaRitardo(motive), cause) << joined(motive) << " at " << draw;
    EXPECT_EQ(random->reseedings, 1U);
    EXPECT_EQ(random->draws, cause.is_empty() ? 0U : 1U);
  }
}

}  // namespace
}  // namespace ravelinox::testing
