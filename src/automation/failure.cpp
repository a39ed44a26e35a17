// Failures as result codes, as descriptions of a call, and as the last failure of an object.
#include "automation/failure.hpp"

#include <utility>

#include "automation/identifiers.hpp"
#include "automation/wire_text.hpp"

namespace ravelinox::automation {
namespace {

/// Null, the empty text, where there is no memory for more.
rlx_text text_or_null(const std::string& utf8) noexcept {
  try {
    return to_wire_text(utf8);
  } catch (const std::exception&) {
    return nullptr;
  }
}

/// Nothing where there is no memory for the sentence.
std::string sentence(const std::exception& failure) noexcept {
  try {
    return failure.what();
  } catch (const std::exception&) {
    return {};
  }
}

const FailureFace& behind(rlx_error_info* self) { return *static_cast<FailureFace*>(self); }

rlx_result give(rlx_text* place, const std::string& utf8) {
  if (place == nullptr) return RLX_E_POINTER;
  *place = text_or_null(utf8);
  return RLX_S_OK;
}

template <class T>
rlx_result give_none(rlx_error_info* /*self*/, T* place) {
  if (place == nullptr) return RLX_E_POINTER;
  *place = T{};
  return RLX_S_OK;
}

constexpr rlx_error_info_slots kSlots{
    [](rlx_error_info* self, const rlx_guid* id, void** object) {
      rlx_dispatch& owner = behind(self).owner();
      return owner.slots->QueryInterface(&owner, id, object);
    },
    [](rlx_error_info* self) {
      rlx_dispatch& owner = behind(self).owner();
      return owner.slots->AddRef(&owner);
    },
    [](rlx_error_info* self) {
      rlx_dispatch& owner = behind(self).owner();
      return owner.slots->Release(&owner);
    },
    [](rlx_error_info* /*self*/, rlx_guid* id) {
      if (id == nullptr) return rlx_result{RLX_E_POINTER};
      *id = kInterfaceId;
      return rlx_result{RLX_S_OK};
    },
    [](rlx_error_info* /*self*/, rlx_text* source) { return give(source, kProgramId); },
    [](rlx_error_info* self, rlx_text* text) { return give(text, behind(self).description()); },
    give_none<rlx_text>,
    give_none<std::uint32_t>,
};

}  // namespace

rlx_result failure_code(std::int32_t number) {
  constexpr std::uint32_t own_group = 0x800A0000U;
  if (number < 0 || number > 0xFFFF) return number;
  return static_cast<rlx_result>(own_group | static_cast<std::uint32_t>(number));
}

Outcome outcome_of(const Error& failure) {
  return {failure_code(failure.number()), 0, true, sentence(failure)};
}

Outcome outcome_of(const std::exception& failure) {
  return {RLX_E_UNEXPECTED, 0, true, sentence(failure)};
}

void describe(const Outcome& outcome, rlx_exception& exception) noexcept {
  exception = {};
  exception.source = text_or_null(kProgramId);
  exception.description = text_or_null(outcome.description);
  exception.result = outcome.result;
}

FailureFace::FailureFace(rlx_dispatch& owner) : rlx_error_info{&kSlots}, owner_(owner) {}

void FailureFace::set_description(std::string description) noexcept {
  description_ = std::move(description);
}

}  // namespace ravelinox::automation
