#pragma once

#include "ravelinox/automation.h"

namespace ravelinox::automation {

/// The table of the dual interface `_cmdl1`: the dispatch interface's seven functions, the
/// accessors of each property, the methods.
[[nodiscard]] const rlx_dispatch_slots* component_slots();

}  // namespace ravelinox::automation
