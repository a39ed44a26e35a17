// The component's random numbers, as its rules use them. The source behind them is
// `platform().random`.
#pragma once

#include <cmath>

#include "ravelinox/platform.hpp"

namespace ravelinox {

/// A fresh uniform number in [0, 1) from the source in force.
[[nodiscard]] inline double draw() { return static_cast<double>(platform().random->draw()); }

/// The largest whole number not greater than the product of a fresh draw and `factor`.
[[nodiscard]] inline double draw_below(RandomSource& random, double factor) {
  return std::floor(static_cast<double>(random.draw()) * factor);
}

}  // namespace ravelinox
