// A voice that takes its time.
#include "host/loudspeaker.hpp"

#include <gtest/gtest.h>

namespace ravelinox::host {
namespace {

using namespace std::chrono_literals;

/// Says nothing and does not end before it is let go.
class HangingVoice : public Voice {
 public:
  explicit HangingVoice(std::shared_future<void> end) : end_(std::move(end)) {}
  void speak(const std::string&) override { end_.wait(); }

 private:
  std::shared_future<void> end_;
};

TEST(Loudspeaker, AHangingVoiceHoldsNothingUp) {
  std::promise<void> end;
  int voices = 0;
  Loudspeaker loudspeaker([&voices, ending = end.get_future().share()] {
    ++voices;
    return std::make_unique<HangingVoice>(ending);
  });
  loudspeaker.say("one");
  loudspeaker.say("two");
  EXPECT_EQ(loudspeaker.failure_within(0s), "the last one has not come to its end");
  end.set_value();
  EXPECT_EQ(loudspeaker.failure(), "");
  EXPECT_EQ(voices, 1);
}

}  // namespace
}  // namespace ravelinox::host
