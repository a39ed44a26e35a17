// The objects that the border shows: counted references, the root and dispatch interfaces.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

#include "automation/failure.hpp"
#include "automation/member.hpp"
#include "ravelinox/automation.h"
#include "ravelinox/variant.hpp"

namespace ravelinox::automation {

/// Objects alive and locks held; the library may be unloaded at 0.
[[nodiscard]] std::atomic<std::int32_t>& use_count();

/// An object with a dispatch interface. Its creator holds the first reference; the last `release`
/// ends it.
class Face : public rlx_dispatch {
 public:
  Face(std::span<const Member> members, const rlx_dispatch_slots* table);
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;
  virtual ~Face();

  std::uint32_t retain() { return ++references_; }
  virtual std::uint32_t release();

  /// Whether one more interface, besides the root, dispatch and failure ones, is this pointer too.
  [[nodiscard]] virtual bool is_also(const rlx_guid& /*id*/) const { return false; }

  [[nodiscard]] std::span<const Member> members() const { return members_; }

  /// Keeps what a call came to, and gives its code.
  rlx_result ended(Outcome outcome);
  [[nodiscard]] FailureFace& last_failure() { return last_failure_; }

 protected:
  std::uint32_t drop() { return --references_; }

 private:
  std::span<const Member> members_;
  std::atomic<std::uint32_t> references_{1};
  FailureFace last_failure_;
};

[[nodiscard]] inline Face& face_behind(rlx_dispatch* self) { return *static_cast<Face*>(self); }

/// The functions that every face has.
[[nodiscard]] const rlx_dispatch_slots& dispatch_slots();

/// A new reference to the face of an object of the engine, the same one as long as anybody holds
/// it; null for none.
[[nodiscard]] rlx_dispatch* face_of(const std::shared_ptr<Object>& object);

/// What the engine keeps for an object of the caller: its own object again when it is the face of
/// one, else a wrapper that holds a reference.
[[nodiscard]] Variant object_from_wire(const rlx_variant& value);

/// An object of the host's, kept by the engine for the host.
class ForeignObject : public Object {
 public:
  explicit ForeignObject(const rlx_variant& value);
  ~ForeignObject() override;

  /// A new reference to it.
  [[nodiscard]] rlx_variant to_wire() const;

 private:
  rlx_variant value_;
};

}  // namespace ravelinox::automation
