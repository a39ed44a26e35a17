// The public address system of a host: text first, sound if there is any.
#include "host/loudspeaker.hpp"

#include <chrono>
#include <thread>
#include <utility>

#include "host/attempt.hpp"

namespace ravelinox::host {
namespace {

class ShownVoice : public Voice {
 public:
  explicit ShownVoice(AnnouncementSink sink) : sink_(std::move(sink)) {}
  void speak(const std::string& text) override {
    if (!text.empty()) sink_(text);
  }

 private:
  AnnouncementSink sink_;
};

/// Empty when the text has been spoken.
std::string failure_to_speak(const VoiceFactory& voices, const std::string& text) {
  try {
    const std::unique_ptr<Voice> voice = voices ? voices() : nullptr;
    if (!voice) return "there is no voice";
    voice->speak(text);
    return {};
  } catch (const Error& error) {
    return describe(error);
  }
}

}  // namespace

VoiceFactory voice_to(AnnouncementSink sink) {
  return [sink = std::move(sink)] { return std::make_unique<ShownVoice>(sink); };
}

void Loudspeaker::say(const std::string& text) {
  using namespace std::chrono_literals;
  if (speaking_.valid() && speaking_.wait_for(0s) != std::future_status::ready) return;
  if (!failure().empty()) return;
  std::packaged_task<std::string()> task(
      [voices = voices_, text] { return failure_to_speak(voices, text); });
  speaking_ = task.get_future();
  began_ = std::chrono::steady_clock::now();
  std::thread(std::move(task)).detach();
}

const std::string& Loudspeaker::failure() {
  if (speaking_.valid()) failure_ = speaking_.get();
  return failure_;
}

std::string Loudspeaker::failure_within(std::chrono::seconds longest) {
  if (speaking_.valid() && speaking_.wait_until(began_ + longest) != std::future_status::ready) {
    return "the last one has not come to its end";
  }
  return failure();
}

}  // namespace ravelinox::host
