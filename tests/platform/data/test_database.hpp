// A database with tables and rows for one test, in a folder of its own.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/data/create_database.hpp"
#include "ravelinox/database.hpp"
#include "support/cases.hpp"
#include "support/slot.hpp"
#include "support/station.hpp"

namespace ravelinox::data::testing {

using namespace ravelinox::testing;
using enum ErrorNumber;

struct TestDatabase {
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
