// Calls by name and by identifier.
#include "automation/dispatch.hpp"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "automation/arguments.hpp"
#include "automation/identifiers.hpp"
#include "automation/objects.hpp"
#include "automation/wire_text.hpp"
#include "automation/wire_values.hpp"

namespace ravelinox::automation {
namespace {

constexpr std::uint16_t kAnyPut = RLX_USE_PUT | RLX_USE_PUT_REFERENCE;

/// The position of the element whose name has these small letters, or the end.
template <class Range>
auto named(const Range& range, const std::string& letters) {
  return std::ranges::find_if(
      range, [&](const auto& element) { return folded_name(element.name) == letters; });
}

const Member& member_with(const Face& face, std::int32_t id) {
  const auto member = std::ranges::find(face.members(), id, &Member::id);
  if (member == face.members().end()) throw Refusal{RLX_DISP_E_MEMBERNOTFOUND};
  return *member;
}

bool is_object(const rlx_variant& value) {
  constexpr int to_variant = RLX_BYREF | RLX_VARIANT;
  const auto* target =
      value.kind == to_variant ? static_cast<const rlx_variant*>(value.value.reference) : &value;
  const int kind = target == nullptr ? RLX_EMPTY : target->kind & ~RLX_BYREF;
  return kind == RLX_DISPATCH || kind == RLX_UNKNOWN;
}

/// How a property takes its value: by reference where the caller says so, or leaves it open and
/// gives an object.
Call put_of(const Member& member, std::uint16_t use, const rlx_arguments& arguments) {
  const bool gives_object =
      arguments.count > 0 && arguments.values != nullptr && is_object(arguments.values[0]);
  const bool by_reference =
      (use & RLX_USE_PUT) == 0 || ((use & RLX_USE_PUT_REFERENCE) != 0 && gives_object);
  if (by_reference && member.put_reference != nullptr && !gives_object)
    throw Refusal{RLX_DISP_E_TYPEMISMATCH};
  return by_reference ? member.put_reference : member.put;
}

Call read_of(const Member& member, std::uint16_t use) {
  if ((use & RLX_USE_METHOD) != 0 && member.run != nullptr) return member.run;
  return (use & RLX_USE_GET) != 0 ? member.get : nullptr;
}

Variant call(Face& face, const Member& member, std::uint16_t use, const rlx_arguments& arguments) {
  const bool gives = (use & kAnyPut) != 0;
  const Call action = gives ? put_of(member, use, arguments) : read_of(member, use);
  if (action == nullptr) throw Refusal{RLX_DISP_E_MEMBERNOTFOUND};
  if (!gives) return action(face, arranged(arguments, member.parameters));
  const Variant value = given_value(arguments, member);
  return action(face, {&value, 1});
}

}  // namespace

rlx_result no_type_information_count(rlx_dispatch* /*self*/, std::uint32_t* count) {
  if (count == nullptr) return RLX_E_POINTER;
  *count = 0;
  return RLX_S_OK;
}

rlx_result no_type_information(rlx_dispatch* /*self*/, std::uint32_t /*index*/,
                               std::uint32_t /*locale*/, void** info) {
  if (info == nullptr) return RLX_E_POINTER;
  *info = nullptr;
  return RLX_DISP_E_BADINDEX;
}

rlx_result ids_of_names(rlx_dispatch* self, const rlx_guid* reserved, std::uint16_t** names,
                        std::uint32_t count, std::uint32_t /*locale*/, std::int32_t* ids) {
  if (reserved != nullptr && !same(*reserved, kNoId)) return RLX_DISP_E_UNKNOWNINTERFACE;
  if (count == 0) return RLX_S_OK;
  if (names == nullptr || ids == nullptr) return RLX_E_POINTER;
  std::fill_n(ids, count, RLX_ID_UNKNOWN);
  Face& face = face_behind(self);
  return face.ended(attempt([&] {
    const auto member = named(face.members(), folded_name(names[0]));
    if (member == face.members().end()) throw Refusal{RLX_DISP_E_UNKNOWNNAME};
    ids[0] = member->id;
    for (std::uint32_t at = 1; at < count; ++at) {
      const auto parameter = named(member->parameters, folded_name(names[at]));
      if (parameter != member->parameters.end())
        ids[at] = static_cast<std::int32_t>(parameter - member->parameters.begin());
    }
    if (std::find(ids, ids + count, RLX_ID_UNKNOWN) != ids + count)
      throw Refusal{RLX_DISP_E_UNKNOWNNAME};
  }));
}

rlx_result invoke(rlx_dispatch* self, std::int32_t member, const rlx_guid* reserved,
                  std::uint32_t /*locale*/, std::uint16_t use, rlx_arguments* arguments,
                  rlx_variant* result, rlx_exception* failure, std::uint32_t* wrong_argument) {
  if (reserved != nullptr && !same(*reserved, kNoId)) return RLX_DISP_E_UNKNOWNINTERFACE;
  if (result != nullptr) *result = {};
  Face& face = face_behind(self);
  const rlx_arguments none{};
  Outcome outcome = attempt([&] {
    const Variant value =
        call(face, member_with(face, member), use, arguments == nullptr ? none : *arguments);
    if (result != nullptr) *result = to_wire(value);
  });
  if (outcome.result < 0 && !outcome.from_engine && wrong_argument != nullptr)
    *wrong_argument = outcome.argument;
  if (outcome.from_engine) {
    if (failure != nullptr) describe(outcome, *failure);
    outcome.result = RLX_DISP_E_EXCEPTION;
  }
  return face.ended(std::move(outcome));
}

}  // namespace ravelinox::automation
