#pragma once

#include "core/members.hpp"
#include "ravelinox/automation.h"
#include "ravelinox/variant.hpp"

namespace ravelinox::automation {

static_assert(sizeof(rlx_guid) == 16 && sizeof(rlx_variant) == 8 + 2 * sizeof(void*));
static_assert(sizeof(rlx_arguments) == 2 * sizeof(void*) + 8);
static_assert(sizeof(void*) != 8 || sizeof(rlx_exception) == 64);

/// A value for the caller, who owns what is in it. Throws `std::bad_alloc`.
[[nodiscard]] rlx_variant to_wire(const Variant& value);

/// The caller's value, looked up where it is by reference. Whole numbers that the engine has no
/// kind for get the next wider one. Refuses kinds that the border does not know.
[[nodiscard]] Variant from_wire(const rlx_variant& value);

/// `value` in exactly the kind that a member needs, converted by the engine's rules. Refuses with
/// the code for a mismatch or an overflow.
[[nodiscard]] Variant as_kind(Variant value, members::Kind kind);

/// What stands for an argument that the caller left out. Refuses when it is not optional.
[[nodiscard]] Variant left_out(const members::Parameter& parameter);

/// The value of an argument in the parameter's kind, or what stands for one that is marked as
/// missing. A value is converted; a reference to a value of another width is refused where the
/// parameter itself is one.
[[nodiscard]] Variant argument_value(const rlx_variant& value, const members::Parameter& parameter);

/// The border's number for a kind; that of a variant for an object of any class.
[[nodiscard]] std::uint16_t wire_kind(members::Kind kind);

/// Days since 30 December 1899, with the time of day as the fraction; before that day the fraction
/// still counts forward.
[[nodiscard]] double to_wire_date(const DateTime& moment);
[[nodiscard]] DateTime from_wire_date(double days);

}  // namespace ravelinox::automation
