#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/members.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox::automation {

class Face;

/// The arguments of a call, each in the kind of its parameter.
using Values = std::span<const Variant>;
using Call = Variant (*)(Face& face, Values values);

/// A property or a method of an object that can be called by name. What it cannot do is null.
struct Member {
  std::string_view name;
  std::int32_t id = 0;
  members::Kind kind = members::Kind::none;             ///< of the property, or of the result
  std::span<const members::Parameter> parameters = {};  ///< of the method, or of reading
  Call run = nullptr;
  Call get = nullptr;
  Call put = nullptr;
  Call put_reference = nullptr;
};

}  // namespace ravelinox::automation
