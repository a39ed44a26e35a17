// The day's random decisions on whole trains, and what the operator and the train's state hear of
// them.
#pragma once

#include <cstdint>
#include <string_view>

#include "ravelinox/cmdl1.hpp"
#include "ravelinox/platform.hpp"

namespace ravelinox {

/// Whether a decision of the chance 1 in `one_in` falls; always for 0 and 1. Reseeds first.
[[nodiscard]] bool drawn_one_in(RandomSource& random, std::int16_t one_in);

/// Sets a train's state back to that of one that has not started.
void reset_train(cmdl1& engine, std::int32_t train);

/// Orders priority running for one train in ten thousand. Reseeds first.
void draw_priority(cmdl1& engine, std::int32_t train);

/// Gives a train its delay cause, unless it has one.
void draw_delay_cause(cmdl1& engine, std::int32_t train);

/// Messages from "Dirigente centrale".
void announce_suppression(std::string_view day, std::int32_t train);
void announce_extraordinary_train(std::int32_t train);

}  // namespace ravelinox
