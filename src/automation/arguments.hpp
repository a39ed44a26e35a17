#pragma once

#include <vector>

#include "automation/member.hpp"
#include "ravelinox/automation.h"

namespace ravelinox::automation {

/// The values for a member's parameters, in their order and kinds: positional ones, named ones by
/// the parameter's position, and what stands for those left out. A refusal names the argument by
/// its index in the block.
[[nodiscard]] std::vector<Variant> arranged(const rlx_arguments& block,
                                            std::span<const members::Parameter> parameters);

/// The one value that a property is given.
[[nodiscard]] Variant given_value(const rlx_arguments& block, const Member& property);

}  // namespace ravelinox::automation
