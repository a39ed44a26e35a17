#include <gtest/gtest.h>

#include "platform/data/statistics.hpp"
#include "platform/data/test_database.hpp"

namespace ravelinox::data::testing {
namespace {

/// One row of every kind, each at or near a limit.
TestDatabase one_row() {
  return TestDatabase{
      "CREATE TABLE t (I INTEGER, S SMALLINT, Y BYTE, B BOOLEAN, R REAL, D DOUBLE, T TEXT, X)",
      "INSERT INTO t VALUES (2147483000, -32768, 255, 0, 0.3, 1.5, 'a', NULL)"};
}

TEST(Updates, WhatAColumnKeeps) {
  for (const auto& [assignment, row] : Table<std::string, std::string_view>{
           {"I = I + 647, Y = Y - 255", "2147483647, -32768, 0, False, 0.3, 1.5, a, Null"},
           {"I = True, B = 5, D = D / 4", "-1, -32768, 255, True, 0.3, 0.375, a, Null"},
           {"R = 1E-05, T = '007', X = '05'",
            "2147483000, -32768, 255, False, 0.00001, 1.5, 007, 05"},
           {"I = S, S = I - 2147483000, T = S", "-32768, 0, 255, False, 0.3, 1.5, -32768, Null"},
           {"t.R = R - 0.1 WHERE t.Y = 255",
            "2147483000, -32768, 255, False, 0.2, 1.5, a, Null"}}) {
    const TestDatabase database = one_row();
    database.change("UPDATE t SET " + assignment);
    EXPECT_EQ(database.rows("SELECT * FROM t"), row) << assignment;
  }
}

TEST(Updates, WhatFailsChangesNoRow) {
  const TestDatabase database{
      "CREATE TABLE t (N INTEGER, I INTEGER, S SMALLINT, Y BYTE, R REAL, D DOUBLE, B BOOLEAN, "
      "T TEXT CHECK (T <> 'bad'))",
      "INSERT INTO t VALUES (1, 0, 0, 0, 1, 1e308, 0, 'x'), "
      "(2, 2147483647, 32767, 255, 3e38, 1e308, 0, '12 rooms'), (3, 'stray', 0, 0, 1, 1, 0, 'x')"};
  const std::string before = database.rows("SELECT * FROM t");
  for (const auto& [error, assignments] : Table<ErrorNumber, std::vector<std::string>>{
           {overflow,
            {"I = I + 1 WHERE N < 3", "I = I * 4294967296 * 4294967296 WHERE N < 3",
             "I = 2147483648", "S = I", "Y = Y - 1", "Y = True", "R = R * 10", "D = D * 10"}},
           {type_mismatch,
            {"I = I + 1 WHERE N <> 2", "I = ''", "I = N + 'soon'", "I = T", "I = T + 1",
             "R = 'soon'", "B = 'soon'"}},
           {division_by_zero, {"R = N / (N - 2)"}},
           {data_failure, {"T = 'bad'"}}}) {
    for (const std::string& assignment : assignments) {
      EXPECT_EQ(error_of([&] { database.change("UPDATE t SET " + assignment); }), error)
          << assignment;
      EXPECT_EQ(database.rows("SELECT * FROM t"), before) << assignment;
    }
  }
}

TEST(Updates, TheSecondUseOfAShapePreparesNothing) {
  const TestDatabase database = one_row();
  const auto run = [&](int number, const std::string& text) {
    const std::string digits = std::to_string(number);
    database.change("UPDATE t SET I = I - " + digits + ", T = '" + text + "' WHERE Y = 255");
    Slot slot(database.connection);
    slot.open("SELECT I, T FROM t WHERE T = '" + text + "' AND I > '-" + digits + "'");
    EXPECT_EQ(slot.record_count(), 1) << text;
    slot.set(0, number);
    slot.update();
  };
  run(1, "a");
  run(1, "è");
  const auto before = engine_prepares();
  run(250, "b''c; -- '' %");
  run(3, "Ìà");
  EXPECT_EQ(engine_prepares(), before);
  database.change("UPDATE t SET I = 1");
  EXPECT_GT(engine_prepares(), before) << "the count does not count";
}

}  // namespace
}  // namespace ravelinox::data::testing
