// The real things behind the seams of `Platform`.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ravelinox/platform.hpp"

namespace ravelinox {

[[nodiscard]] std::shared_ptr<RandomSource> make_clock_seeded_source();

/// Voices of the speech service that the environment names when a voice is made.
[[nodiscard]] std::function<std::unique_ptr<Voice>()> make_speech_service_voices();

}  // namespace ravelinox
