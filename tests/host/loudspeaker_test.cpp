#include "host/loudspeaker.hpp"

#include <gtest/gtest.h>

namespace ravelinox::host {
namespace {

TEST(Loudspeaker, AHangingVoiceHoldsNothingUp) {
  std::promise<void> end;
  int voices = 0;
  Loudspeaker loudspeaker([&voices, ending = end.get_future().share()] {
    ++voices;
    return voice_to([ending](const std::string&) { ending.wait(); })();
  });
  loudspeaker.say("one");
  loudspeaker.say("two");
  EXPECT_EQ(loudspeaker.failure_within(std::chrono::seconds(0)),
            "the last one has not come to its end");
  end.set_value();
  EXPECT_EQ(loudspeaker.failure(), "");
  EXPECT_EQ(voices, 1);
}

}  // namespace
}  // namespace ravelinox::host
