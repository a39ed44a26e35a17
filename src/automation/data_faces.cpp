// The members of the data layer's objects. Identifiers count up within each class.
#include "automation/data_faces.hpp"

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

#include "ravelinox/data.hpp"

namespace ravelinox::automation {
namespace {

using members::Kind;
using members::Parameter;

/// One column of a recordset's current row, which a host may hold longer than the recordset's slot.
class FieldObject : public Object {
 public:
  FieldObject(std::shared_ptr<Recordset> recordset, std::int16_t position)
      : recordset_(std::move(recordset)), position_(position) {
    (void)field();  // a position that is not there fails here
  }

  [[nodiscard]] Field field() const { return recordset_->field(position_); }

 private:
  std::shared_ptr<Recordset> recordset_;
  std::int16_t position_;
};

template <class T>
std::shared_ptr<T> shared(Face& face) {
  return std::static_pointer_cast<T>(static_cast<DataFace&>(face).object());
}

// What a C++ value of the data layer is as a variant, and back.

template <class T>
Variant wrapped(T value) {
  if constexpr (std::is_enum_v<T>) {
    return static_cast<std::int32_t>(value);
  } else {
    return value;
  }
}
Variant wrapped(std::chrono::seconds value) { return static_cast<std::int32_t>(value.count()); }
Variant wrapped(const std::shared_ptr<Connection>& value) { return std::shared_ptr<Object>(value); }

template <class T>
T unwrapped(const Variant& value) {
  if constexpr (std::is_same_v<T, std::string>) {
    return *value.get_if<std::string>();
  } else if constexpr (std::is_same_v<T, std::shared_ptr<Connection>>) {
    return std::static_pointer_cast<Connection>(*value.get_if<std::shared_ptr<Object>>());
  } else {
    return static_cast<T>(*value.get_if<std::int32_t>());
  }
}

// Members made from the class's own functions.

template <class T, auto Function>
Variant read(Face& face, Values /*none*/) {
  return wrapped(((*shared<T>(face)).*Function)());
}

template <class T, class Value, void (T::*Function)(Value)>
Variant write(Face& face, Values values) {
  ((*shared<T>(face)).*Function)(unwrapped<Value>(values[0]));
  return {};
}

template <class T, void (T::*Function)()>
Variant run(Face& face, Values /*none*/) {
  ((*shared<T>(face)).*Function)();
  return {};
}

template <auto Function>
constexpr Call kConnectionRead = read<Connection, Function>;
template <auto Function>
constexpr Call kRead = read<Recordset, Function>;
template <auto Function>
constexpr Call kRun = run<Recordset, Function>;

constexpr std::array kConnection{
    Member{.name = "ConnectionString",
           .id = 1,
           .kind = Kind::text,
           .get = kConnectionRead<&Connection::connection_string>,
           .put = write<Connection, std::string, &Connection::set_connection_string>},
    Member{.name = "ConnectionTimeout",
           .id = 2,
           .kind = Kind::int32,
           .get = kConnectionRead<&Connection::timeout>,
           .put = write<Connection, std::chrono::seconds, &Connection::set_timeout>},
    Member{.name = "CursorLocation",
           .id = 3,
           .kind = Kind::int32,
           .get = kConnectionRead<&Connection::cursor_location>,
           .put = write<Connection, CursorLocation, &Connection::set_cursor_location>},
    Member{.name = "Mode",
           .id = 4,
           .kind = Kind::int32,
           .get = kConnectionRead<&Connection::mode>,
           .put = write<Connection, ShareMode, &Connection::set_mode>},
    Member{
        .name = "State", .id = 5, .kind = Kind::int32, .get = kConnectionRead<&Connection::state>},
    Member{.name = "Open", .id = 6, .run = run<Connection, &Connection::open>},
    Member{.name = "Close", .id = 7, .run = run<Connection, &Connection::close>},
};

constexpr std::array kOpenParameters{Parameter{"Source", Kind::text}};
constexpr std::array kFieldsParameters{Parameter{"Index", Kind::int16}};

Variant open(Face& face, Values values) {
  shared<Recordset>(face)->open(*values[0].get_if<std::string>());
  return {};
}

Variant column(Face& face, Values values) {
  return std::shared_ptr<Object>(
      std::make_shared<FieldObject>(shared<Recordset>(face), *values[0].get_if<std::int16_t>()));
}

constexpr std::array kRecordset{
    Member{.name = "ActiveConnection",
           .id = 1,
           .kind = Kind::connection,
           .get = kRead<&Recordset::active_connection>,
           .put_reference =
               write<Recordset, std::shared_ptr<Connection>, &Recordset::set_active_connection>},
    Member{.name = "LockType",
           .id = 2,
           .kind = Kind::int32,
           .get = kRead<&Recordset::lock_type>,
           .put = write<Recordset, LockType, &Recordset::set_lock_type>},
    Member{.name = "Open", .id = 3, .parameters = kOpenParameters, .run = open},
    Member{.name = "Close", .id = 4, .run = kRun<&Recordset::close>},
    Member{.name = "State", .id = 5, .kind = Kind::int32, .get = kRead<&Recordset::state>},
    Member{.name = "EOF", .id = 6, .kind = Kind::boolean, .get = kRead<&Recordset::end_of_file>},
    Member{.name = "BOF", .id = 7, .kind = Kind::boolean, .get = kRead<&Recordset::begin_of_file>},
    Member{.name = "RecordCount",
           .id = 8,
           .kind = Kind::int32,
           .get = kRead<&Recordset::record_count>},
    Member{
        .name = "FieldCount", .id = 9, .kind = Kind::int32, .get = kRead<&Recordset::field_count>},
    Member{.name = "MoveFirst", .id = 10, .run = kRun<&Recordset::move_first>},
    Member{.name = "MoveNext", .id = 11, .run = kRun<&Recordset::move_next>},
    Member{.name = "MovePrevious", .id = 12, .run = kRun<&Recordset::move_previous>},
    Member{.name = "MoveLast", .id = 13, .run = kRun<&Recordset::move_last>},
    Member{.name = "Fields",
           .id = 14,
           .kind = Kind::object,
           .parameters = kFieldsParameters,
           .get = column},
    Member{.name = "Update", .id = 15, .run = kRun<&Recordset::update>},
};

Variant read_value(Face& face, Values /*none*/) {
  return shared<FieldObject>(face)->field().value();
}

Variant write_value(Face& face, Values values) {
  shared<FieldObject>(face)->field().set_value(values[0]);
  return {};
}

constexpr std::array kField{
    Member{.name = "Value",
           .id = RLX_ID_VALUE,
           .kind = Kind::variant,
           .get = read_value,
           .put = write_value},
};

}  // namespace

Face* new_data_face(const std::shared_ptr<Object>& object) {
  if (dynamic_cast<const Connection*>(object.get()) != nullptr)
    return new DataFace(object, kConnection);
  if (dynamic_cast<const Recordset*>(object.get()) != nullptr)
    return new DataFace(object, kRecordset);
  return new DataFace(object, kField);
}

}  // namespace ravelinox::automation
