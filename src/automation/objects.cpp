// References to objects, and whose they are.
#include "automation/objects.hpp"

#include <mutex>
#include <unordered_map>
#include <utility>

#include "automation/data_faces.hpp"
#include "automation/dispatch.hpp"
#include "automation/identifiers.hpp"

namespace ravelinox::automation {
namespace {

rlx_result query(rlx_dispatch* self, const rlx_guid* id, void** object) {
  if (object == nullptr) return RLX_E_POINTER;
  *object = nullptr;
  if (id == nullptr) return RLX_E_POINTER;
  Face& face = face_behind(self);
  if (same(*id, kUnknownId) || same(*id, kDispatchId) || face.is_also(*id)) {
    *object = self;
  } else if (same(*id, kErrorInfoId)) {
    *object = static_cast<rlx_error_info*>(&face.last_failure());
  } else {
    return RLX_E_NOINTERFACE;
  }
  face.retain();
  return RLX_S_OK;
}

/// The faces that hosts hold, by their objects, so that an object keeps its identity. Objects on
/// different threads meet here and nowhere else.
class Faces {
 public:
  rlx_dispatch* reference_to(const std::shared_ptr<Object>& object) {
    const std::lock_guard lock(mutex_);
    const auto [known, is_new] = faces_.try_emplace(object.get(), nullptr);
    if (!is_new) {
      known->second->retain();
      return known->second;
    }
    try {
      known->second = new_data_face(object);
    } catch (...) {
      faces_.erase(known);
      throw;
    }
    return known->second;
  }

  /// Runs `drop`, which gives the references left, and forgets the face after the last one.
  template <class Drop>
  std::uint32_t release(const Object* object, const Drop& drop) {
    const std::lock_guard lock(mutex_);
    const std::uint32_t left = drop();
    if (left == 0) faces_.erase(object);
    return left;
  }

 private:
  std::mutex mutex_;
  std::unordered_map<const Object*, Face*> faces_;
};

/// Never destroyed: a host may let go of its objects as late as in its own static destructors.
Faces& faces() {
  static Faces& all = *new Faces;
  return all;
}

}  // namespace

std::atomic<std::int32_t>& use_count() {
  static std::atomic<std::int32_t> count{0};
  return count;
}

Face::Face(std::span<const Member> members, const rlx_dispatch_slots* table)
    : rlx_dispatch{table}, members_(members), last_failure_(*this) {
  ++use_count();
}

Face::~Face() { --use_count(); }

std::uint32_t Face::release() {
  const std::uint32_t left = drop();
  if (left == 0) {
    // The host's objects that go with this one may take and give back a reference meanwhile.
    retain();
    delete this;
  }
  return left;
}

rlx_result Face::ended(Outcome outcome) {
  if (outcome.result < 0) last_failure_.set_description(std::move(outcome.description));
  return outcome.result;
}

const rlx_dispatch_slots& dispatch_slots() {
  static constexpr rlx_dispatch_slots table{
      query,
      [](rlx_dispatch* self) { return face_behind(self).retain(); },
      [](rlx_dispatch* self) { return face_behind(self).release(); },
      no_type_information_count,
      no_type_information,
      ids_of_names,
      invoke,
  };
  return table;
}

DataFace::DataFace(std::shared_ptr<Object> object, std::span<const Member> members)
    : Face(members, &dispatch_slots()), object_(std::move(object)) {}

std::uint32_t DataFace::release() {
  const std::uint32_t left = faces().release(object_.get(), [this] { return drop(); });
  if (left == 0) delete this;
  return left;
}

rlx_dispatch* face_of(const std::shared_ptr<Object>& object) {
  return object ? faces().reference_to(object) : nullptr;
}

Variant object_from_wire(const rlx_variant& value) {
  rlx_dispatch* const object = value.value.dispatch;
  if (object == nullptr) return std::shared_ptr<Object>();
  if (object->slots == &dispatch_slots())
    return static_cast<DataFace&>(face_behind(object)).object();
  return std::shared_ptr<Object>(std::make_shared<ForeignObject>(value));
}

ForeignObject::ForeignObject(const rlx_variant& value) : value_(value) { (void)to_wire(); }

ForeignObject::~ForeignObject() { rlx_variant_clear(&value_); }

rlx_variant ForeignObject::to_wire() const {
  value_.value.unknown->slots->AddRef(value_.value.unknown);
  return value_;
}

}  // namespace ravelinox::automation
