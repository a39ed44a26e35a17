#include "values.hpp"

#include <datetime.h>

#include <array>
#include <chrono>
#include <limits>
#include <memory>
#include <string_view>

namespace ravelinox::python {

namespace {

/// The date-time functions of the interpreter, fetched at the first use.
void need_datetime() {
  if (PyDateTimeAPI == nullptr) PyDateTime_IMPORT;
  if (PyDateTimeAPI == nullptr) throw py::error_already_set();
}

[[noreturn]] void refuse(py::handle value, const char* wanted) {
  throw py::type_error(std::string(wanted) + " is needed, not " + Py_TYPE(value.ptr())->tp_name);
}

template <class T>
T whole_number(py::handle value) {
  if (PyIndex_Check(value.ptr()) == 0) refuse(value, "a whole number");
  const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
  if (!index) throw py::error_already_set();
  int beyond = 0;
  const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &beyond);
  if (beyond != 0 || number < std::numeric_limits<T>::min() ||
      number > std::numeric_limits<T>::max()) {
    throw Error(ErrorNumber::overflow, "The number " + std::string(py::str(index)) +
                                           " does not fit into " + std::to_string(sizeof(T) * 8) +
                                           " bits; give one that does.");
  }
  return static_cast<T>(number);
}

DateTime moment(py::handle value) {
  PyObject* given = value.ptr();
  if (PyDateTime_DATE_GET_TZINFO(given) != Py_None) refuse(value, "a datetime without a time zone");
  const std::chrono::year_month_day date(
      std::chrono::year(PyDateTime_GET_YEAR(given)),
      std::chrono::month(static_cast<unsigned>(PyDateTime_GET_MONTH(given))),
      std::chrono::day(static_cast<unsigned>(PyDateTime_GET_DAY(given))));
  return DateTime(std::chrono::sys_days(date) +
                  std::chrono::hours(PyDateTime_DATE_GET_HOUR(given)) +
                  std::chrono::minutes(PyDateTime_DATE_GET_MINUTE(given)) +
                  std::chrono::seconds(PyDateTime_DATE_GET_SECOND(given)));
}

bool is_moment(py::handle value) {
  need_datetime();
  return PyDateTime_Check(value.ptr());
}

py::object mark(const char* name) { return from_base("Mark").attr(name); }

py::object object_to_python(const std::shared_ptr<Object>& object) {
  if (auto connection = std::dynamic_pointer_cast<Connection>(object)) return py::cast(connection);
  if (auto slot = std::dynamic_pointer_cast<Recordset>(object)) return py::cast(slot);
  return py::none();
}

}  // namespace

py::object from_base(const char* name) { return py::module_::import("ravelinox._base").attr(name); }

void from_python(py::handle value, bool& result) {
  if (PyBool_Check(value.ptr()) == 0) refuse(value, "True or False");
  result = value.ptr() == Py_True;
}

void from_python(py::handle value, std::uint8_t& result) {
  result = whole_number<std::uint8_t>(value);
}
void from_python(py::handle value, std::int16_t& result) {
  result = whole_number<std::int16_t>(value);
}
void from_python(py::handle value, std::int32_t& result) {
  result = whole_number<std::int32_t>(value);
}

void from_python(py::handle value, float& result) {
  const double number = PyFloat_AsDouble(value.ptr());
  if (number == -1.0 && PyErr_Occurred() != nullptr) throw py::error_already_set();
  result = static_cast<float>(number);
}

void from_python(py::handle value, DateTime& result) {
  if (!is_moment(value)) refuse(value, "a datetime");
  result = moment(value);
}

void from_python(py::handle value, std::string& result) {
  if (PyUnicode_Check(value.ptr()) == 0) refuse(value, "a text");
  const auto bytes = py::reinterpret_steal<py::bytes>(
      PyUnicode_AsEncodedString(value.ptr(), "utf-8", "surrogateescape"));
  if (!bytes) throw py::error_already_set();
  result = std::string(bytes);
}

void from_python(py::handle value, Variant& result) {
  const auto of_kind = [&]<class T>(T held) {
    from_python(value, held);
    result = Variant(std::move(held));
  };
  if (value.is_none()) {
    result = Variant::null();
  } else if (PyBool_Check(value.ptr()) != 0) {
    of_kind(false);
  } else if (PyUnicode_Check(value.ptr()) != 0) {
    of_kind(std::string());
  } else if (PyFloat_Check(value.ptr()) != 0) {
    result = Variant(PyFloat_AS_DOUBLE(value.ptr()));
  } else if (PyIndex_Check(value.ptr()) != 0) {
    of_kind(std::int32_t{});
  } else if (is_moment(value)) {
    of_kind(DateTime());
  } else if (py::isinstance<Object>(value)) {
    result = Variant(value.cast<std::shared_ptr<Object>>());
  } else if (value.is(mark("MISSING"))) {
    result = Variant::missing();
  } else if (value.is(mark("EMPTY"))) {
    result = Variant();
  } else {
    refuse(value, "a value of the engine's kinds");
  }
}

py::object to_python(bool value) { return py::bool_(value); }
py::object to_python(std::int32_t value) { return py::int_(value); }
py::object to_python(float value) { return py::float_(value); }

py::object to_python(const DateTime& value) {
  need_datetime();
  auto result = py::reinterpret_steal<py::object>(PyDateTime_FromDateAndTime(
      value.year(), value.month(), value.day(), value.hour(), value.minute(), value.second(), 0));
  if (!result) throw py::error_already_set();
  return result;
}

py::object to_python(const std::string& value) {
  auto result = py::reinterpret_steal<py::object>(
      PyUnicode_DecodeUTF8(value.data(), static_cast<Py_ssize_t>(value.size()), "surrogateescape"));
  if (!result) throw py::error_already_set();
  return result;
}

py::object to_python(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::empty:
      return mark("EMPTY");
    case Variant::Kind::missing:
      return mark("MISSING");
    case Variant::Kind::null:
      return py::none();
    case Variant::Kind::boolean:
      return to_python(*value.get_if<bool>());
    case Variant::Kind::float32:
    case Variant::Kind::float64:
      return py::float_(to_float64(value));
    case Variant::Kind::date_time:
      return to_python(*value.get_if<DateTime>());
    case Variant::Kind::text:
      return to_python(*value.get_if<std::string>());
    case Variant::Kind::object:
      return object_to_python(*value.get_if<std::shared_ptr<Object>>());
    default:
      return to_python(to_int32(value));
  }
}

}  // namespace ravelinox::python
