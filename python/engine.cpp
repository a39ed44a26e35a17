// The class `cmdl1`, made from the member table: what the table lists is there, with its parameter
// names and its optional ones, and nothing else.
#include <pybind11/pybind11.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>

#include "bindings.hpp"
#include "core/engine_members.hpp"
#include "ravelinox/cmdl1.hpp"
#include "ravelinox/platform.hpp"
#include "values.hpp"

namespace ravelinox::python {

namespace {

/// An engine that only one thread uses at a time. The interpreter's lock is released during a call,
/// so another thread could come in; it is refused instead of breaking the state. A seam that calls
/// its own engine back, on the same thread, is let in.
class Engine {
 public:
  /// The component folder may be one of the user's that nobody has made yet. If it cannot be made,
  /// the calls that write there say so.
  Engine() {
    std::error_code not_made;
    std::filesystem::create_directories(platform().component_folder, not_made);
  }

  template <class Act>
  auto with(Act act) {
    const Turn turn(*this);
    return act(engine_);
  }

  /// The same for what may take long: other threads of Python run meanwhile.
  template <class Act>
  auto aside(Act act) {
    const Turn turn(*this);
    const py::gil_scoped_release others_run;
    return act(engine_);
  }

 private:
  /// Taken and given back under the interpreter's lock, which guards the two members.
  class Turn {
   public:
    explicit Turn(Engine& owner) : owner_(owner) {
      const std::thread::id self = std::this_thread::get_id();
      if (owner_.depth_ > 0 && owner_.user_ != self) {
        throw Error(ErrorNumber::invalid_call,
                    "The cmdl1 object is at work on another thread; give each thread its own.");
      }
      owner_.user_ = self;
      ++owner_.depth_;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() { --owner_.depth_; }

   private:
    Engine& owner_;
  };

  cmdl1 engine_;
  std::thread::id user_;
  int depth_ = 0;
};

using EngineClass = py::class_<Engine>;

// Properties.

template <auto Member, class T>
void add_property(EngineClass& shown, const char* name, T cmdl1::* /*member*/) {
  shown.def_property(
      name, [](Engine& self) { return self.with([](cmdl1& it) { return Passed<T>{it.*Member}; }); },
      [](Engine& self, Passed<T> value) {
        self.with([&](cmdl1& it) { it.*Member = std::move(value.value); });
      });
}

/// An object property: reading makes the object, None lets go of it.
template <auto Member, class T>
void add_property(EngineClass& shown, const char* name, Created<T> cmdl1::* /*member*/) {
  shown.def_property(
      name, [](Engine& self) { return self.with([](cmdl1& it) { return (it.*Member).get(); }); },
      [](Engine& self, std::shared_ptr<T> object) {
        self.with([&](cmdl1& it) { (it.*Member).set(std::move(object)); });
      });
}

template <std::size_t... Index>
void add_properties(EngineClass& shown, std::index_sequence<Index...>) {
  (add_property<kEngineProperty<Index>>(shown, members::kProperties[Index].name.data(),
                                        kEngineProperty<Index>),
   ...);
}

// Methods.

template <class T>
Passed<T> left_out() {
  if constexpr (std::is_same_v<T, Variant>) {
    return {Variant::missing()};
  } else {
    return {};
  }
}

template <std::size_t Method, std::size_t At, class T>
auto parameter() {
  constexpr members::Parameter row = members::kMethods[Method].parameters[At];
  const py::arg named(row.name.data());
  if constexpr (!row.optional) {
    return named;
  } else {
    return py::arg_v(named, left_out<T>(), std::is_same_v<T, Variant> ? "MISSING" : "0");
  }
}

template <std::size_t Index, std::size_t... At, class Result, class... Parameters>
void add_method(EngineClass& shown, std::index_sequence<At...>,
                Result (cmdl1::* /*method*/)(Parameters...)) {
  const auto call = [](Engine& self, const Passed<std::remove_cvref_t<Parameters>>&... passed) {
    return self.aside([&](cmdl1& it) {
      if constexpr (std::is_void_v<Result>) {
        (it.*kEngineMethod<Index>)(passed.value...);
      } else if constexpr (std::is_same_v<Result, std::uint8_t>) {
        return Passed<std::int32_t>{(it.*kEngineMethod<Index>)(passed.value...)};
      } else {
        return Passed<Result>{(it.*kEngineMethod<Index>)(passed.value...)};
      }
    });
  };
  shown.def(members::kMethods[Index].name.data(), call,
            parameter<Index, At, std::remove_cvref_t<Parameters>>()...);
}

template <std::size_t... Index>
void add_methods(EngineClass& shown, std::index_sequence<Index...>) {
  (add_method<Index>(shown, std::make_index_sequence<members::kMethods[Index].parameter_count()>{},
                     kEngineMethod<Index>),
   ...);
}

}  // namespace

void bind_engine(py::module_& module) {
  EngineClass shown(module, "cmdl1",
                    "The station engine. One object belongs to one thread at a time.");
  shown.def(py::init<>());
  add_properties(shown, PropertyIndexes{});
  add_methods(shown, MethodIndexes{});
}

}  // namespace ravelinox::python
