// The seams as Python sees them: the attributes of `ravelinox.platform`. A seam set from Python is
// called under the interpreter's lock, on the thread whose call needs it.
#include <pybind11/pybind11.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bindings.hpp"
#include "held.hpp"
#include "ravelinox/platform.hpp"
#include "values.hpp"

namespace ravelinox::python {

namespace {

using Voices = std::function<std::unique_ptr<Voice>()>;
using Beep = std::function<void()>;

[[nodiscard]] bool has(py::handle object, const char* name) { return py::hasattr(object, name); }

void need(bool right, const char* what) {
  if (!right) throw py::type_error(what);
}

/// A class stands for a maker: it gives a new object for each use.
py::object made(const Held& maker) {
  return PyType_Check(maker.get().ptr()) != 0 ? maker.get()() : maker.get();
}

// The random source.

class PythonRandom : public RandomSource {
 public:
  explicit PythonRandom(py::object source) : source_(std::move(source)) {}

  float draw() override {
    const py::gil_scoped_acquire lock;
    const py::object drawn = source_.get().attr("draw")();
    const double number = PyFloat_AsDouble(drawn.ptr());
    if (number == -1.0 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    // What is drawn chooses rows and pieces of tables.
    if (!(number >= 0 && number < 1)) throw py::value_error("draw() must give a number in [0, 1)");
    // Python's floats are finer, and the largest of them below 1 would be rounded to 1.
    return std::min(static_cast<float>(number), std::nextafter(1.0F, 0.0F));
  }
  void reseed() override {
    const py::gil_scoped_acquire lock;
    source_.get().attr("reseed")();
  }

  [[nodiscard]] py::object source() const { return source_.get(); }

 private:
  Held source_;
};

py::object get_random(Platform& it) {
  const auto set_here = std::dynamic_pointer_cast<PythonRandom>(it.random);
  return set_here ? set_here->source() : py::cast(it.random);
}

void set_random(Platform& it, const py::object& source) {
  if (py::isinstance<RandomSource>(source)) {
    it.random = source.cast<std::shared_ptr<RandomSource>>();
    return;
  }
  need(has(source, "draw") && has(source, "reseed"),
       "a random source has the methods draw() and reseed()");
  it.random = std::make_shared<PythonRandom>(source);
}

// The other seams are functions. One that came from Python remembers its object, and one of the
// component's own is shown as an object that can be kept and set again.

template <class Function>
struct Native {
  Function function;
};

template <class Function, class FromPython>
py::object get_function(const Function& function) {
  if (const auto* set_here = function.template target<FromPython>()) return set_here->object->get();
  return function ? py::cast(Native<Function>{function}) : py::none();
}

template <class Function, class FromPython>
void set_function(Function& function, const py::object& value) {
  if (value.is_none()) {
    function = nullptr;
  } else if (py::isinstance<Native<Function>>(value)) {
    function = value.cast<Native<Function>&>().function;
  } else {
    need(FromPython::fits(value), FromPython::kNeeded);
    function = FromPython{std::make_shared<Held>(value)};
  }
}

// The voice.

class PythonVoice : public Voice {
 public:
  explicit PythonVoice(py::object voice) : voice_(std::move(voice)) {}
  void speak(const std::string& text) override {
    const py::gil_scoped_acquire lock;
    const py::object voice = voice_.get();
    (has(voice, "speak") ? py::object(voice.attr("speak")) : voice)(to_python(text));
  }

 private:
  Held voice_;
};

struct PythonVoices {
  static constexpr const char* kNeeded =
      "a voice is a function of the text, or has the method speak(text)";
  static bool fits(const py::object& value) {
    return has(value, "speak") || PyCallable_Check(value.ptr()) != 0;
  }
  std::unique_ptr<Voice> operator()() const {
    const py::gil_scoped_acquire lock;
    return std::make_unique<PythonVoice>(made(*object));
  }
  std::shared_ptr<Held> object;
};

void speak(const Native<Voices>& it, const Passed<std::string>& text) {
  const py::gil_scoped_release others_run;
  const std::unique_ptr<Voice> voice = it.function();
  if (!voice) throw Error(ErrorNumber::cannot_create_object, "There is no voice to speak with.");
  voice->speak(text.value);
}

// The telephone's window. What it raises must reach nobody but the interpreter's own report: no
// message fails because of its view.

class PythonWindow : public TelephoneWindow {
 public:
  explicit PythonWindow(py::object window) : window_(std::move(window)) {}

  void show(const TelephoneView& view) override {
    const py::gil_scoped_acquire lock;
    const py::object window = window_.get();
    reported([&] { (has(window, "show") ? py::object(window.attr("show")) : window)(view); });
  }
  bool closed() override {
    const py::gil_scoped_acquire lock;
    const py::object window = window_.get();
    bool answer = false;
    if (has(window, "closed"))
      reported([&] { answer = py::bool_(py::object(window.attr("closed")())); });
    return answer;
  }

  template <class Act>
  static void reported(Act act) {
    try {
      act();
    } catch (py::error_already_set& failure) {
      failure.discard_as_unraisable("ravelinox.platform.telephone_window");
    }
  }

 private:
  Held window_;
};

struct PythonWindows {
  static constexpr const char* kNeeded =
      "a telephone's window is a function of the view, or has the method show(view)";
  static bool fits(const py::object& value) {
    return has(value, "show") || PyCallable_Check(value.ptr()) != 0;
  }
  std::unique_ptr<TelephoneWindow> operator()() const {
    const py::gil_scoped_acquire lock;
    std::unique_ptr<TelephoneWindow> window;
    PythonWindow::reported([&] { window = std::make_unique<PythonWindow>(made(*object)); });
    return window;
  }
  std::shared_ptr<Held> object;
};

// The beep.

struct PythonBeep {
  static constexpr const char* kNeeded = "a beep is a function without parameters";
  static bool fits(const py::object& value) { return PyCallable_Check(value.ptr()) != 0; }
  void operator()() const {
    const py::gil_scoped_acquire lock;
    object->get()();
  }
  std::shared_ptr<Held> object;
};

/// The window's program beside the component, or beside a folder around it: a package lies deeper
/// in the tree than a library does.
TelephoneWindowFactory telephone_near(std::filesystem::path folder) {
  constexpr int most_levels = 4;  // lib/python3/dist-packages/ravelinox
  std::vector<TelephoneWindowFactory> places;
  for (int level = 0; level < most_levels; ++level, folder = folder.parent_path())
    places.push_back(desktop_telephone(folder.string()));
  return [places = std::move(places)]() -> std::unique_ptr<TelephoneWindow> {
    for (const TelephoneWindowFactory& make : places)
      if (std::unique_ptr<TelephoneWindow> window = make()) return window;
    return nullptr;
  };
}

void bind_natives(py::module_& module) {
  py::class_<RandomSource, std::shared_ptr<RandomSource>>(module, "RandomSource")
      .def("draw", [](RandomSource& it) { return Passed<float>{it.draw()}; })
      .def("reseed", &RandomSource::reseed);
  py::class_<Native<Voices>>(module, "DefaultVoice").def("speak", speak, py::arg("text"));
  const py::class_<Native<TelephoneWindowFactory>> opaque(module, "DefaultTelephoneWindow");
  py::class_<Native<Beep>>(module, "DefaultBeep").def("__call__", [](const Native<Beep>& it) {
    it.function();
  });
}

}  // namespace

void bind_seams(py::module_& module) {
  bind_natives(module);
  py::class_<Platform>(module, "Platform", "What the component takes from its surroundings.")
      .def_property("random", get_random, set_random)
      .def_property(
          "component_folder",
          [](const Platform& it) { return Passed<std::string>{it.component_folder}; },
          [](Platform& it, const Passed<std::string>& folder) {
            it.component_folder = folder.value;
          })
      .def_property(
          "telephone_window",
          [](const Platform& it) {
            return get_function<TelephoneWindowFactory, PythonWindows>(it.telephone_window);
          },
          [](Platform& it, const py::object& value) {
            set_function<TelephoneWindowFactory, PythonWindows>(it.telephone_window, value);
          })
      .def_property(
          "beep", [](const Platform& it) { return get_function<Beep, PythonBeep>(it.beep); },
          [](Platform& it, const py::object& value) {
            set_function<Beep, PythonBeep>(it.beep, value);
          })
      .def_property(
          "voice", [](const Platform& it) { return get_function<Voices, PythonVoices>(it.voice); },
          [](Platform& it, const py::object& value) {
            set_function<Voices, PythonVoices>(it.voice, value);
          });
  platform().telephone_window = telephone_near(platform().component_folder);
  module.attr("platform") = py::cast(&platform(), py::return_value_policy::reference);
}

}  // namespace ravelinox::python
