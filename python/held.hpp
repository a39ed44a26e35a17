// A Python object that the engine keeps.
#pragma once

#include <pybind11/pybind11.h>

#include <utility>

namespace ravelinox::python {

/// Keeps its object from threads that do not hold the interpreter's lock, and beyond the end of the
/// interpreter: the seams, and the telephones of other threads, are let go of when the process
/// ends, and what is left then is not freed.
class Held {
 public:
  explicit Held(pybind11::object object) : object_(std::move(object)) {}
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() {
    if (Py_IsInitialized() == 0 || _Py_IsFinalizing() != 0) {
      object_.release();
      return;
    }
    const pybind11::gil_scoped_acquire lock;
    object_ = pybind11::object();
  }

  /// Another reference; the caller holds the interpreter's lock.
  [[nodiscard]] pybind11::object get() const { return object_; }

 private:
  pybind11::object object_;
};

}  // namespace ravelinox::python
