// Values between Python and the engine, in both directions.
//
//   Python                        engine
//   None                          Null
//   MISSING, EMPTY                missing, empty
//   bool, int, float, str         Boolean, whole number of 32 bits, 64-bit float, text
//   datetime.datetime             date-time
//   Connection, Recordset         object
#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>
#include <type_traits>

#include "ravelinox/data.hpp"
#include "ravelinox/error.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox::python {

namespace py = pybind11;

/// An attribute of the package's Python half: `Error`, `Mark`.
[[nodiscard]] py::object from_base(const char* name);

// From Python. A value of another kind is a TypeError; a whole number that does not fit the kind is
// the engine's overflow, Error 6. Texts may hold lone surrogates, which stand for bytes that are no
// UTF-8, so that a text from a foreign file comes back to it unchanged.
void from_python(py::handle value, bool& result);
void from_python(py::handle value, std::uint8_t& result);
void from_python(py::handle value, std::int16_t& result);
void from_python(py::handle value, std::int32_t& result);
void from_python(py::handle value, float& result);
void from_python(py::handle value, DateTime& result);
void from_python(py::handle value, std::string& result);
void from_python(py::handle value, Variant& result);

[[nodiscard]] py::object to_python(bool value);
[[nodiscard]] py::object to_python(std::int32_t value);
[[nodiscard]] py::object to_python(float value);
[[nodiscard]] py::object to_python(const DateTime& value);
[[nodiscard]] py::object to_python(const std::string& value);
[[nodiscard]] py::object to_python(const Variant& value);

/// A parameter or a result that crosses by the rules above, instead of the binding library's own.
template <class T>
struct Passed {
  T value{};
};

/// What the type is called in signatures and stubs.
template <class T>
constexpr auto name_in_python() {
  using py::detail::const_name;
  if constexpr (std::is_same_v<T, bool>) {
    return const_name("bool");
  } else if constexpr (std::is_integral_v<T>) {
    return const_name("int");
  } else if constexpr (std::is_same_v<T, float>) {
    return const_name("float");
  } else if constexpr (std::is_same_v<T, DateTime>) {
    return const_name("datetime.datetime");
  } else if constexpr (std::is_same_v<T, std::string>) {
    return const_name("str");
  } else {
    static_assert(std::is_same_v<T, Variant>);
    return const_name("Value");
  }
}

}  // namespace ravelinox::python

namespace pybind11::detail {

template <class T>
struct type_caster<ravelinox::python::Passed<T>> {
  PYBIND11_TYPE_CASTER(ravelinox::python::Passed<T>, ravelinox::python::name_in_python<T>());

  bool load(handle source, bool /*convert*/) {
    ravelinox::python::from_python(source, value.value);
    return true;
  }
  static handle cast(const ravelinox::python::Passed<T>& source, return_value_policy /*policy*/,
                     handle /*parent*/) {
    return ravelinox::python::to_python(source.value).release();
  }
};

}  // namespace pybind11::detail
