// A session with a database file of its own, as another program has one: statements in, rows out as
// text.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ravelinox/data.hpp"

namespace ravelinox::testing {

/// Waits for nobody's lock.
[[nodiscard]] inline std::shared_ptr<Connection> connect(const std::string& path) {
  auto connection = std::make_shared<Connection>();
  connection->set_connection_string("Data source = " + path);
  connection->set_timeout({});
  connection->open();
  return connection;
}

/// A slot that is ready for statements.
class Slot : public Recordset {
 public:
  explicit Slot(const std::shared_ptr<Connection>& connection) {
    set_active_connection(connection);
    set_lock_type(LockType::optimistic);
  }

  [[nodiscard]] Variant value(std::int16_t column) { return field(column).value(); }
  void set(std::int16_t column, const Variant& value) { field(column).set_value(value); }

  /// The rows of a statement, cells joined by ", ", rows by " / ".
  [[nodiscard]] std::string rows(std::string_view statement) {
    std::string result;
    for (open(statement); !end_of_file(); move_next()) {
      if (!result.empty()) result += " / ";
      for (std::int16_t i = 0; i < field_count(); ++i) {
        result += i == 0 ? "" : ", ";
        result += value(i).is_null() ? "Null" : to_text(value(i));
      }
    }
    close();
    return result;
  }
};

}  // namespace ravelinox::testing
