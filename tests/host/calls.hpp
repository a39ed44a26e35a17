// Trains that call at a station around a moment, for boards and announcements.
#pragma once

#include "host/board.hpp"

namespace ravelinox::host {

constexpr Timestamp now = 10 * hour;
constexpr Timestamp none = 9999;  ///< where the run has no such event

/// A call with its times in minutes from now, all of which are expected `late` minutes later.
inline BoardCall call(std::int32_t train, Timestamp arrival, Timestamp departure,
                      Timestamp late = 0) {
  const auto at = [](Timestamp minutes) {
    return minutes < none ? std::optional(now + minutes * minute) : std::nullopt;
  };
  return {train,
          "R",
          {"Borgo", at(arrival), at(departure), at(arrival + late), at(departure + late), 30, "1"}};
}

}  // namespace ravelinox::host
