// The parts of the module, each in a source of its own.
#pragma once

#include <pybind11/pybind11.h>

namespace ravelinox::python {

void bind_data(pybind11::module_& module);
void bind_telephone(pybind11::module_& module);
void bind_seams(pybind11::module_& module);
void bind_engine(pybind11::module_& module);

}  // namespace ravelinox::python
