// The class behind the border, and the one object that makes more of it.
#include "automation/component.hpp"

#include "automation/identifiers.hpp"
#include "automation/slots.hpp"

namespace ravelinox::automation {
namespace {

// The factory lives as long as the library; references to it only keep the library loaded.
std::uint32_t count_reference(rlx_class_factory* /*self*/) {
  return static_cast<std::uint32_t>(++use_count());
}
std::uint32_t drop_reference(rlx_class_factory* /*self*/) {
  return static_cast<std::uint32_t>(--use_count());
}

rlx_result query(rlx_class_factory* self, const rlx_guid* id, void** object) {
  if (object == nullptr) return RLX_E_POINTER;
  *object = nullptr;
  if (id == nullptr) return RLX_E_POINTER;
  if (!same(*id, kUnknownId) && !same(*id, kClassFactoryId)) return RLX_E_NOINTERFACE;
  *object = self;
  count_reference(self);
  return RLX_S_OK;
}

rlx_result create(rlx_class_factory* /*self*/, rlx_unknown* outer, const rlx_guid* id,
                  void** object) {
  if (object == nullptr) return RLX_E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return RLX_CLASS_E_NOAGGREGATION;
  Component* component = nullptr;
  const Outcome outcome = attempt([&component] { component = new Component; });
  if (component == nullptr) return outcome.result;
  const rlx_result result = component->slots->QueryInterface(component, id, object);
  component->release();
  return result;
}

rlx_result lock_server(rlx_class_factory* /*self*/, std::int32_t lock) {
  static std::atomic<std::int32_t> locks{0};
  if (lock != 0) {
    ++locks;
    ++use_count();
  } else if (locks.fetch_sub(1) > 0) {
    --use_count();
  } else {
    ++locks;  // nobody's lock: an object that lives is not to be unloaded for it
  }
  return RLX_S_OK;
}

}  // namespace

Component::Component() : Face(component_members(), component_slots()) {}

bool Component::is_also(const rlx_guid& id) const { return same(id, kInterfaceId); }

rlx_class_factory& class_factory() {
  static constexpr rlx_class_factory_slots table{query, count_reference, drop_reference, create,
                                                 lock_server};
  static rlx_class_factory factory{&table};
  return factory;
}

}  // namespace ravelinox::automation
