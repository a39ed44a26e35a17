#pragma once

#include <cstdint>

#include "ravelinox/automation.h"

namespace ravelinox::automation {

/// Ends a call that does not reach the engine: thrown inside the layer, a result code outside.
struct Refusal {
  rlx_result result;
  std::uint32_t argument = 0;  ///< which one is wrong, by its position in the interface
};

}  // namespace ravelinox::automation
