// The compiled half of the package `ravelinox`; its `__init__.py` shows the names to programs.
#include <pybind11/pybind11.h>

#include <exception>
#include <string>
#include <utility>

#include "bindings.hpp"
#include "values.hpp"

namespace ravelinox::python {

namespace {

/// The engine's failures become the package's one exception class.
void translate(std::exception_ptr failure) {
  try {
    if (failure) std::rethrow_exception(std::move(failure));
  } catch (const Error& error) {
    const py::object raised =
        from_base("Error")(error.number(), to_python(std::string(error.what())));
    PyErr_SetObject(py::type::handle_of(raised).ptr(), raised.ptr());
  }
}

}  // namespace

PYBIND11_MODULE(_engine, module) {
  py::register_exception_translator(translate);
  bind_data(module);
  bind_telephone(module);
  bind_seams(module);
  bind_engine(module);
}

}  // namespace ravelinox::python
