// The caller's block of arguments: named ones first, then positional ones from the last to the
// first.
#include "automation/arguments.hpp"

#include <cstddef>
#include <optional>

#include "automation/refusal.hpp"
#include "automation/wire_values.hpp"

namespace ravelinox::automation {
namespace {

using members::Parameter;

/// For each parameter the index of its argument in the block.
using Places = std::vector<std::optional<std::uint32_t>>;

void place_positional(const rlx_arguments& block, Places& places) {
  const std::uint32_t count = block.count - block.named_count;
  if (count > places.size()) throw Refusal{RLX_DISP_E_BADPARAMCOUNT};
  for (std::uint32_t at = 0; at < count; ++at) places[at] = block.count - 1 - at;
}

void place_named(const rlx_arguments& block, Places& places) {
  for (std::uint32_t at = 0; at < block.named_count; ++at) {
    const std::int32_t name = block.names[at];
    const bool is_there = name >= 0 && static_cast<std::size_t>(name) < places.size();
    if (!is_there || places[static_cast<std::size_t>(name)])
      throw Refusal{RLX_DISP_E_PARAMNOTFOUND, at};
    places[static_cast<std::size_t>(name)] = at;
  }
}

/// An argument's value; a refusal gets the argument's index.
Variant value_at(const rlx_arguments& block, std::uint32_t index, const Parameter& parameter) {
  try {
    return argument_value(block.values[index], parameter);
  } catch (const Refusal& refusal) {
    throw Refusal{refusal.result, index};
  }
}

/// Required arguments that are not there: a wrong count, unless names tell which one is missing.
void require_all(std::span<const Parameter> parameters, const Places& places, bool has_names) {
  for (std::size_t at = 0; at < parameters.size(); ++at)
    if (!places[at] && !parameters[at].optional)
      throw Refusal{has_names ? RLX_DISP_E_PARAMNOTOPTIONAL : RLX_DISP_E_BADPARAMCOUNT};
}

void check_block(const rlx_arguments& block) {
  if (block.named_count > block.count) throw Refusal{RLX_DISP_E_BADPARAMCOUNT};
  if ((block.count > 0 && block.values == nullptr) ||
      (block.named_count > 0 && block.names == nullptr))
    throw Refusal{RLX_E_POINTER};
}

}  // namespace

std::vector<Variant> arranged(const rlx_arguments& block, std::span<const Parameter> parameters) {
  check_block(block);
  Places places(parameters.size());
  place_positional(block, places);
  place_named(block, places);
  require_all(parameters, places, block.named_count > 0);
  std::vector<Variant> values;
  values.reserve(parameters.size());
  for (std::size_t at = 0; at < parameters.size(); ++at)
    values.push_back(places[at] ? value_at(block, *places[at], parameters[at])
                                : left_out(parameters[at]));
  return values;
}

Variant given_value(const rlx_arguments& block, const Member& property) {
  check_block(block);
  if (block.count != 1) throw Refusal{RLX_DISP_E_BADPARAMCOUNT};
  if (block.named_count != 1) throw Refusal{RLX_DISP_E_PARAMNOTOPTIONAL};
  if (block.names[0] != RLX_ID_PUT) throw Refusal{RLX_DISP_E_PARAMNOTFOUND};
  // Not a parameter of the object's own: any width may be referred to, and missing is a value.
  return as_kind(from_wire(block.values[0]), property.kind);
}

}  // namespace ravelinox::automation
