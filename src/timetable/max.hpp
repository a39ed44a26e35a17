#pragma once

#include "ravelinox/variant.hpp"

namespace ravelinox::mdl1 {

/// The greater of two values by their 32-bit whole numbers (halves to even): `a` when it is
/// strictly greater, else `b`, each in the kind that it came in. 6, 13 or 94 when one does not
/// convert.
[[nodiscard]] Variant Max(const Variant& a, const Variant& b);

}  // namespace ravelinox::mdl1
