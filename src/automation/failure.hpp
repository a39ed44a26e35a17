// What a call came to: nothing thrown ever crosses the border.
#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <string>

#include "automation/refusal.hpp"
#include "ravelinox/automation.h"
#include "ravelinox/error.hpp"

namespace ravelinox::automation {

struct Outcome {
  rlx_result result = RLX_S_OK;
  std::uint32_t argument = 0;  ///< the wrong one, of a call that was refused
  bool from_engine = false;    ///< the engine was called, and failed
  std::string description = {};
};

/// The code of an engine's failure: numbers below 65536 in the group of a component's own.
[[nodiscard]] rlx_result failure_code(std::int32_t number);

[[nodiscard]] Outcome outcome_of(const Error& failure);
[[nodiscard]] Outcome outcome_of(const std::exception& failure);

/// Runs `action` and tells what it came to.
template <class Action>
[[nodiscard]] Outcome attempt(const Action& action) noexcept {
  try {
    action();
    return {};
  } catch (const Refusal& refusal) {
    return {refusal.result, refusal.argument};
  } catch (const Error& failure) {
    return outcome_of(failure);
  } catch (const std::bad_alloc&) {
    return {RLX_E_OUTOFMEMORY};
  } catch (const std::exception& failure) {
    return outcome_of(failure);
  } catch (...) {
    return {RLX_E_UNEXPECTED};
  }
}

/// Describes an engine's failure to the caller, who owns the texts.
void describe(const Outcome& outcome, rlx_exception& exception) noexcept;

/// The last failure of an object, as an interface of that object.
class FailureFace : public rlx_error_info {
 public:
  explicit FailureFace(rlx_dispatch& owner);

  [[nodiscard]] rlx_dispatch& owner() const { return owner_; }
  [[nodiscard]] const std::string& description() const { return description_; }
  void set_description(std::string description) noexcept;

 private:
  rlx_dispatch& owner_;
  std::string description_;
};

}  // namespace ravelinox::automation
