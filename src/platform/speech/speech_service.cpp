// Finds the service, or starts it once: a start that failed is not tried again for some seconds,
// so that a machine without speech loses no time on every announcement.
#include "platform/speech/speech_service.hpp"

#include <cstdlib>
#include <optional>
#include <thread>
#include <utility>

#include "platform/defaults.hpp"
#include "platform/speech/service_voice.hpp"
#include "platform/speech/start_service.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox {

namespace {

std::string address_in_environment() {
  const char* setting = std::getenv("SPEECHD_ADDRESS");
  return setting == nullptr ? std::string() : std::string(setting);
}

std::optional<LineChannel> connect_if_it_listens(const ServiceAddress& address,
                                                 std::chrono::milliseconds limit) {
  try {
    return LineChannel(address, deadline_in(limit));
  } catch (const NobodyListens&) {
    return std::nullopt;
  }
}

/// A service that has just been started may take a moment to listen.
LineChannel connect_when_it_listens(const ServiceAddress& address, Deadline deadline) {
  for (;;) {
    try {
      return {address, deadline};
    } catch (const NobodyListens&) {
      if (std::chrono::steady_clock::now() >= deadline) throw;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }
}

}  // namespace

SpeechService::SpeechService(SpeechPatience patience, std::string address, std::string program)
    : patience_(patience), address_(std::move(address)), program_(std::move(program)) {}

std::unique_ptr<Voice> SpeechService::voice() {
  try {
    return std::make_unique<ServiceVoice>(connect(), patience_);
  } catch (const ServiceFailure& failure) {
    throw Error(ErrorNumber::cannot_create_object,
                std::string("The speech service gives no voice: ") + failure.what() +
                    ". Install and start speech-dispatcher, or announce with another voice.");
  }
}

LineChannel SpeechService::connect() {
  const ServiceAddress address =
      parse_service_address(address_.empty() ? address_in_environment() : address_);
  if (auto channel = connect_if_it_listens(address, patience_.answer)) return std::move(*channel);
  if (address.socket_path.empty()) throw NobodyListens("none runs at " + address.name);

  const std::lock_guard one_at_a_time(starting_);
  // Another thread may have started it while this one waited.
  if (auto channel = connect_if_it_listens(address, patience_.answer)) return std::move(*channel);
  if (std::chrono::steady_clock::now() < no_start_before_) {
    throw ServiceFailure("it could not be started a moment ago");
  }
  return start(address);
}

LineChannel SpeechService::start(const ServiceAddress& address) {
  try {
    start_service(program_, address.socket_path, deadline_in(patience_.start));
    return connect_when_it_listens(address, deadline_in(patience_.start));
  } catch (const ServiceFailure&) {
    no_start_before_ = deadline_in(patience_.after_failed_start);
    throw;
  }
}

std::function<std::unique_ptr<Voice>()> make_speech_service_voices() {
  return [service = std::make_shared<SpeechService>()] { return service->voice(); };
}

}  // namespace ravelinox
