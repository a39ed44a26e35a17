// A little language for tests of the data layer: a database in a folder of its own, statements in,
// rows out as text.
#pragma once

#include <chrono>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/data/create_database.hpp"
#include "ravelinox/data.hpp"
#include "ravelinox/database.hpp"
#include "support/cases.hpp"
#include "support/station.hpp"

namespace ravelinox::data::testing {

using ravelinox::testing::error_of;
using ravelinox::testing::Table;
using ravelinox::testing::TemporaryFolder;
using enum ErrorNumber;

[[nodiscard]] inline std::shared_ptr<Connection> connect(const std::string& path,
                                                         std::chrono::seconds timeout = {}) {
  auto connection = std::make_shared<Connection>();
  connection->set_connection_string("Data source = " + path);
  connection->set_timeout(timeout);
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

  /// The rows of a statement, cells joined by "|", rows by " / ".
  [[nodiscard]] std::string rows(std::string_view statement) {
    open(statement);
    std::string result;
    for (; !end_of_file(); move_next()) {
      if (!result.empty()) result += " / ";
      for (std::int16_t i = 0; i < field_count(); ++i) {
        result += i == 0 ? "" : "|";
        result += value(i).is_null() ? "Null" : to_text(value(i));
      }
    }
    close();
    return result;
  }
};

/// A database with the given tables and rows, and a connection to it.
class TestDatabase {
 public:
  explicit TestDatabase(std::initializer_list<std::string_view> definitions) {
    create_database(path, {definitions.begin(), definitions.size()});
    connection = connect(path);
  }

  /// The statement's rows as text, on a slot of its own.
  [[nodiscard]] std::string rows(std::string_view statement) const {
    return Slot(connection).rows(statement);
  }
  void change(std::string_view statement) const { Slot(connection).open(statement); }

  TemporaryFolder folder;
  std::string path = folder.file("test.db");
  std::shared_ptr<Connection> connection;
};

}  // namespace ravelinox::data::testing
