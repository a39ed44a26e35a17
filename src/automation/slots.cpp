// The typed functions of the dual interface, made from the member table. Each has the signature
// that its row says: parameters by reference are pointers, a result comes through the last one.
#include "automation/slots.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "automation/component.hpp"
#include "automation/wire_text.hpp"
#include "automation/wire_values.hpp"
#include "core/engine_members.hpp"
#include "ravelinox/cmdl1.h"

namespace ravelinox::automation {
namespace {

using Slot = void (*)();
static_assert(sizeof(Slot) == sizeof(void*));

// ---- A C++ type's form on the border, with its conversions. ----

template <class T>
struct Wire {  // whole numbers and floats of the same width
  using Type = T;
  static T to_engine(T value) { return value; }
  static T to_caller(T value) { return value; }
};

template <>
struct Wire<bool> {
  using Type = std::int16_t;
  static bool to_engine(Type value) { return value != 0; }
  static Type to_caller(bool value) { return static_cast<Type>(value ? -1 : 0); }
};

template <>
struct Wire<DateTime> {
  using Type = double;
  static Type to_caller(const DateTime& value) { return to_wire_date(value); }
};

template <>
struct Wire<std::string> {
  using Type = rlx_text;
  static std::string to_engine(Type value) { return from_wire_text(value); }
  static Type to_caller(const std::string& value) { return to_wire_text(value); }
};

template <>
struct Wire<Variant> {
  using Type = rlx_variant;
  static Variant to_engine(const Type& value) { return from_wire(value); }
  static Type to_caller(const Variant& value) { return to_wire(value); }
};

template <class T>
struct Wire<Created<T>> {
  using Type = rlx_dispatch*;
  static Type to_caller(Created<T>& value) { return face_of(value.get()); }
};

template <class T>
using WireOf = Wire<std::remove_cvref_t<T>>;

/// Runs a call of the engine and keeps its failure with the object.
template <class Action>
rlx_result guarded(rlx_dispatch* self, const Action& action) {
  Face& face = face_behind(self);
  return face.ended(attempt([&] { action(engine_behind(face)); }));
}

/// Puts what `value` makes into the caller's place, which holds nothing after a failure.
template <class T, class Value>
void give(T* place, const Value& value) {
  if (place == nullptr) throw Refusal{RLX_E_POINTER};
  *place = T{};
  *place = value();
}

// ---- Properties ----

template <std::size_t Index>
using PropertyType =
    std::remove_reference_t<decltype(std::declval<cmdl1&>().*kEngineProperty<Index>)>;

template <std::size_t Index>
rlx_result get(rlx_dispatch* self, typename WireOf<PropertyType<Index>>::Type* place) {
  return guarded(self, [place](cmdl1& engine) {
    give(place,
         [&] { return WireOf<PropertyType<Index>>::to_caller(engine.*kEngineProperty<Index>); });
  });
}

template <std::size_t Index>
rlx_result put(rlx_dispatch* self, typename WireOf<PropertyType<Index>>::Type value) {
  return guarded(self, [&value](cmdl1& engine) {
    replace(engine.*kEngineProperty<Index>, WireOf<PropertyType<Index>>::to_engine(value));
  });
}

template <std::size_t Index>
rlx_result put_variant_reference(rlx_dispatch* self, rlx_variant value) {
  return guarded(self, [&value](cmdl1& engine) {
    replace(engine.*kEngineProperty<Index>, as_kind(from_wire(value), members::Kind::object));
  });
}

template <std::size_t Index>
rlx_result put_object(rlx_dispatch* self, rlx_dispatch* object) {
  return guarded(self, [object](cmdl1& engine) {
    rlx_variant value{};
    value.kind = RLX_DISPATCH;
    value.value.dispatch = object;
    auto& property = engine.*kEngineProperty<Index>;
    using T = std::remove_reference_t<decltype(*property)>;
    const Variant checked = as_kind(from_wire(value), members::kProperties[Index].kind);
    property.set(std::static_pointer_cast<T>(*checked.get_if<std::shared_ptr<Object>>()));
  });
}

rlx_result reserved(rlx_dispatch* /*self*/, rlx_dispatch* /*object*/) { return RLX_E_NOTIMPL; }

// ---- Methods ----

template <std::size_t Index, std::size_t At>
inline constexpr members::Parameter kParameter = members::kMethods[Index].parameters[At];

template <std::size_t Index, std::size_t At, class T>
using Passed = std::conditional_t<kParameter<Index, At>.passing == members::Passing::by_value,
                                  typename WireOf<T>::Type, typename WireOf<T>::Type*>;

/// An argument's value; a null pointer is a missing one.
template <std::size_t Index, std::size_t At, class T>
std::remove_cvref_t<T> argument(const Passed<Index, At, T>& passed) {
  using Plain = std::remove_cvref_t<T>;
  constexpr members::Parameter parameter = kParameter<Index, At>;
  if constexpr (parameter.passing == members::Passing::by_value) {
    return WireOf<T>::to_engine(passed);
  } else {
    if (passed == nullptr && !parameter.optional) throw Refusal{RLX_E_POINTER};
    if constexpr (std::is_same_v<Plain, Variant>) {
      return passed == nullptr ? Variant::missing() : argument_value(*passed, parameter);
    } else {
      return passed == nullptr ? Plain{} : WireOf<T>::to_engine(*passed);
    }
  }
}

/// The slot of a method: `Positions` are those of its parameters.
template <std::size_t Index, class Positions, class Method>
struct MethodSlot;

template <std::size_t Index, std::size_t... At, class Result, class... Parameters>
struct MethodSlot<Index, std::index_sequence<At...>, Result (cmdl1::*)(Parameters...)> {
  static rlx_result call(rlx_dispatch* self, Passed<Index, At, Parameters>... passed,
                         typename WireOf<Result>::Type* place) {
    return guarded(self, [&](cmdl1& engine) {
      give(place, [&] {
        return WireOf<Result>::to_caller(
            (engine.*kEngineMethod<Index>)(argument<Index, At, Parameters>(passed)...));
      });
    });
  }
};

template <std::size_t Index, std::size_t... At, class... Parameters>
struct MethodSlot<Index, std::index_sequence<At...>, void (cmdl1::*)(Parameters...)> {
  static rlx_result call(rlx_dispatch* self, Passed<Index, At, Parameters>... passed) {
    return guarded(self, [&](cmdl1& engine) {
      (engine.*kEngineMethod<Index>)(argument<Index, At, Parameters>(passed)...);
    });
  }
};

// ---- The table ----

constexpr std::size_t kDispatchSlots = sizeof(rlx_dispatch_slots) / sizeof(Slot);

constexpr std::size_t slot_count() {
  std::size_t count = kDispatchSlots + members::kMethods.size();
  for (const members::Property& property : members::kProperties)
    count += members::is_set_by_reference(property.kind) ? 3 : 2;
  return count;
}

/// Owns no memory: it needs no end, and leaves nothing where a host unloads the library.
class Table {
 public:
  Table() {
    const rlx_dispatch_slots& first = dispatch_slots();
    std::memcpy(slots_.data(), &first, sizeof first);
    add_properties(PropertyIndexes{});
    add_methods(MethodIndexes{});
  }

  /// The table begins as that of the dispatch interface.
  [[nodiscard]] const rlx_dispatch_slots* slots() const {
    return static_cast<const rlx_dispatch_slots*>(static_cast<const void*>(slots_.data()));
  }

 private:
  template <class Function>
  void add(Function* function) {
    slots_.at(count_++) = reinterpret_cast<Slot>(function);
  }

  template <std::size_t Index>
  void add_property() {
    constexpr members::Kind kind = members::kProperties[Index].kind;
    add(&get<Index>);
    if constexpr (members::is_object(kind)) {
      add(&reserved);
      add(&put_object<Index>);
    } else {
      add(&put<Index>);
      if constexpr (members::is_set_by_reference(kind)) add(&put_variant_reference<Index>);
    }
  }

  template <std::size_t... Index>
  void add_properties(std::index_sequence<Index...> /*all*/) {
    (add_property<Index>(), ...);
  }

  template <std::size_t... Index>
  void add_methods(std::index_sequence<Index...> /*all*/) {
    (add(&MethodSlot<Index, std::make_index_sequence<members::kMethods[Index].parameter_count()>,
                     std::remove_cv_t<decltype(kEngineMethod<Index>)>>::call),
     ...);
  }

  std::array<Slot, slot_count()> slots_{};
  std::size_t count_ = kDispatchSlots;
};
static_assert(sizeof(rlx_cmdl1_slots) == slot_count() * sizeof(Slot));
static_assert(std::is_trivially_destructible_v<Table>, "objects may outlive static ones");

}  // namespace

const rlx_dispatch_slots* component_slots() {
  static const Table table;
  return table.slots();
}

}  // namespace ravelinox::automation
