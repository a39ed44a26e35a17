// The entry points of the library file, which exports nothing else.
#include "automation/component.hpp"
#include "automation/identifiers.hpp"
#include "automation/registration.hpp"

extern "C" {

rlx_result DllGetClassObject(const rlx_guid* class_id, const rlx_guid* id, void** object) {
  using namespace ravelinox::automation;
  if (object == nullptr) return RLX_E_POINTER;
  *object = nullptr;
  if (class_id == nullptr) return RLX_E_POINTER;
  if (!same(*class_id, kClassId)) return RLX_CLASS_E_CLASSNOTAVAILABLE;
  rlx_class_factory& factory = class_factory();
  return factory.slots->QueryInterface(&factory, id, object);
}

rlx_result DllCanUnloadNow() {
  return ravelinox::automation::use_count() == 0 ? RLX_S_OK : RLX_S_FALSE;
}

rlx_result DllRegisterServer() { return ravelinox::automation::register_server(); }
rlx_result DllUnregisterServer() { return ravelinox::automation::unregister_server(); }

}  // extern "C"
