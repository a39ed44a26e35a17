// Connections, recordsets and the makers of databases, with the names of the C++ headers; what
// takes no argument and changes nothing is a property.
#include <pybind11/pybind11.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "bindings.hpp"
#include "ravelinox/data.hpp"
#include "ravelinox/database.hpp"
#include "values.hpp"

namespace ravelinox::python {

namespace {

/// For calls that read or write files: other threads run meanwhile.
using Aside = py::call_guard<py::gil_scoped_release>;
using Text = Passed<std::string>;

void bind_numbers(py::module_& module) {
  py::enum_<ObjectState>(module, "ObjectState", py::arithmetic())
      .value("closed", ObjectState::closed)
      .value("open", ObjectState::open);
  py::enum_<CursorLocation>(module, "CursorLocation", py::arithmetic())
      .value("server", CursorLocation::server)
      .value("client", CursorLocation::client);
  py::enum_<ShareMode>(module, "ShareMode", py::arithmetic())
      .value("deny_none", ShareMode::deny_none);
  py::enum_<LockType>(module, "LockType", py::arithmetic())
      .value("read_only", LockType::read_only)
      .value("optimistic", LockType::optimistic);
}

void bind_connection(py::module_& module) {
  py::class_<Connection, Object, std::shared_ptr<Connection>>(module, "Connection",
                                                              "A session on one database file.")
      .def(py::init<>())
      .def_property(
          "connection_string", [](const Connection& it) { return Text{it.connection_string()}; },
          [](Connection& it, const Text& text) { it.set_connection_string(text.value); })
      .def_property(
          "timeout",
          [](const Connection& it) {
            return Passed<std::int32_t>{static_cast<std::int32_t>(it.timeout().count())};
          },
          [](Connection& it, Passed<std::int32_t> seconds) {
            it.set_timeout(std::chrono::seconds(seconds.value));
          },
          "In seconds.")
      .def_property("cursor_location", &Connection::cursor_location,
                    &Connection::set_cursor_location)
      .def_property("mode", &Connection::mode, &Connection::set_mode)
      .def("open", &Connection::open, Aside())
      .def("close", &Connection::close, Aside())
      .def_property_readonly("state", &Connection::state);
}

void bind_field(py::module_& module) {
  py::class_<Field>(module, "Field", "One column of a recordset's current row.")
      .def_property(
          "value", [](const Field& it) { return Passed<Variant>{it.value()}; },
          [](Field& it, const Passed<Variant>& value) { it.set_value(value.value); });
}

void bind_recordset(py::module_& module) {
  py::class_<Recordset, Object, std::shared_ptr<Recordset>>(
      module, "Recordset", "A slot that runs one statement at a time.")
      .def(py::init<>())
      .def_property("active_connection", &Recordset::active_connection,
                    &Recordset::set_active_connection)
      .def_property("lock_type", &Recordset::lock_type, &Recordset::set_lock_type)
      .def(
          "open",
          [](Recordset& it, const Text& source) {
            const py::gil_scoped_release others_run;
            it.open(source.value);
          },
          py::arg("source"))
      .def("close", &Recordset::close)
      .def_property_readonly("state", &Recordset::state)
      .def_property_readonly("end_of_file", &Recordset::end_of_file)
      .def_property_readonly("begin_of_file", &Recordset::begin_of_file)
      .def_property_readonly("record_count", &Recordset::record_count)
      .def_property_readonly("field_count", &Recordset::field_count)
      .def("move_first", &Recordset::move_first)
      .def("move_next", &Recordset::move_next)
      .def("move_previous", &Recordset::move_previous)
      .def("move_last", &Recordset::move_last)
      .def(
          "field",
          [](Recordset& it, Passed<std::int16_t> position) { return it.field(position.value); },
          py::arg("position"), py::keep_alive<0, 1>())
      .def("update", &Recordset::update, Aside());
}

/// A writer that is spent refuses, whatever the engine's own would do.
class Writer {
 public:
  explicit Writer(const Text& path) {
    const py::gil_scoped_release others_run;
    rows_ = std::make_unique<RowWriter>(path.value);
  }

  void append(const Text& table, const py::iterable& values) {
    std::vector<Variant> row;
    for (const py::handle value : values) from_python(value, row.emplace_back());
    open().append(table.value, row);
  }

  void commit() {
    RowWriter& rows = open();
    const std::unique_ptr<RowWriter> spent = std::move(rows_);
    const py::gil_scoped_release others_run;
    rows.commit();
  }

  /// The end of a `with` block: all rows, or none after a failure.
  void leave(const py::object& failure) {
    if (failure.is_none() && rows_) return commit();
    rows_.reset();
  }

 private:
  [[nodiscard]] RowWriter& open() const {
    if (rows_) return *rows_;
    throw Error(ErrorNumber::object_closed, "The RowWriter is spent; make another one.");
  }

  std::unique_ptr<RowWriter> rows_;
};

void bind_makers(py::module_& module) {
  module.def(
      "create_station_database", [](const Text& path) { create_station_database(path.value); },
      py::arg("path"));
  module.def(
      "create_line_database", [](const Text& path) { create_line_database(path.value); },
      py::arg("path"));
  py::class_<Writer>(module, "RowWriter",
                     "Appends rows in one transaction; commit makes them final.")
      .def(py::init<const Text&>(), py::arg("path"))
      .def("append", &Writer::append, py::arg("table"), py::arg("values"))
      .def("commit", &Writer::commit)
      .def("__enter__", [](py::object self) { return self; })
      .def("__exit__", [](Writer& it, const py::object& kind, const py::object& /*failure*/,
                          const py::object& /*traceback*/) { it.leave(kind); });
}

}  // namespace

void bind_data(py::module_& module) {
  const py::class_<Object, std::shared_ptr<Object>> base(module, "Object");
  bind_numbers(module);
  bind_connection(module);
  bind_field(module);
  bind_recordset(module);
  bind_makers(module);
}

}  // namespace ravelinox::python
