#include <gtest/gtest.h>

#include <limits>

#include "platform/data/test_database.hpp"

namespace ravelinox::data::testing {
namespace {

TEST(Slots, CellsComeInTheirDeclaredKind) {
  const auto null = Variant::null();
  for (const auto& [type, value, read] : Table<std::string_view, std::string_view, Variant>{
           {"BOOLEAN", "-1", true},
           {"BYTE", "255", std::uint8_t{255}},
           {"TINYINT", "256", std::int32_t{256}},
           {"SMALLINT", "-5", std::int16_t{-5}},
           {"LONG", "604800", std::int32_t{604800}},
           {"INTEGER", "2147483648", 2147483648.0},
           {"Integer", "'soon'", "soon"},
           {"INTEGER", "NULL", null},
           {"SINGLE", "0.1", 0.1F},
           {"REAL", "1e300", 1e300},
           {"DOUBLE PRECISION", "0.1", 0.1},
           {"LONG TEXT", "'x'", "x"},
           {"", "7", std::int32_t{7}},
           {"", "'7'", "7"},
           {"BLOB", "x'00'", {}},  // raw bytes are no value
       }) {
    const TestDatabase database{"CREATE TABLE t (c " + std::string(type) + ")",
                                "INSERT INTO t VALUES (" + std::string(value) + ")"};
    Slot slot(database.connection);
    slot.open("SELECT c FROM t");
    if (read.is_empty()) {
      EXPECT_EQ(error_of([&] { (void)slot.value(0); }), type_mismatch);
    } else {
      EXPECT_EQ(slot.value(0), read) << type << " " << value;
    }
  }
}

/// Three rows with a cell of each kind.
TestDatabase three_rows() {
  return TestDatabase{
      "CREATE TABLE t (I INTEGER, S SMALLINT, Y BYTE, B BOOLEAN, R REAL, T TEXT, X)",
      "INSERT INTO t VALUES (1, 10, 100, 0, 0.5, 'uno', 1), (2, 20, 200, 1, 1.5, 'due', 'x'), "
      "(3, NULL, NULL, NULL, NULL, NULL, NULL)"};
}

TEST(Slots, AssignedCellsAreKeptInTheKindOfTheirColumn) {
  enum Column : std::int16_t { I, S, Y, B, R, T, X };
  const std::string long_text(1000, 'x');
  const auto null = Variant::null();
  const TestDatabase database = three_rows();
  Slot slot(database.connection);
  slot.open("SELECT * FROM t WHERE R = 0.5 OR R = 0.1");
  for (const auto& [column, assigned, kept] :
       Table<Column, Variant, Variant>{{I, 2.5, 2},
                                       {I, true, -1},
                                       {I, null, null},
                                       {S, 32767, std::int16_t{32767}},
                                       {Y, std::int16_t{0}, std::uint8_t{0}},
                                       {B, 7, true},
                                       {R, 0.1, 0.1F},
                                       {T, 12, "12"},
                                       {T, long_text, long_text},
                                       {X, 0.1F, 0.1},
                                       {X, "05", "05"}}) {
    slot.set(column, assigned);
    EXPECT_EQ(slot.value(column), kept) << column << " before it is saved";
    slot.update();
    EXPECT_EQ(slot.value(column), kept) << column;
    slot.close();
    slot.open("SELECT * FROM t WHERE R = 0.5 OR R = 0.1");
    EXPECT_EQ(slot.value(column), kept) << column << " read again";
  }
  const double beyond = std::numeric_limits<double>::max();
  for (const auto& [column, assigned, error] :
       Table<Column, Variant, ErrorNumber>{{S, 32768, overflow},
                                           {R, beyond, overflow},
                                           {I, "", type_mismatch},
                                           {I, Variant::missing(), type_mismatch}}) {
    const Variant before = slot.value(column);
    EXPECT_EQ(error_of([&] { slot.set(column, assigned); }), error) << column;
    EXPECT_EQ(slot.value(column), before) << column;
  }
}

TEST(Slots, RowsAreWalkedAndTheirEndsGuarded) {
  const TestDatabase database = three_rows();
  Slot slot(database.connection);
  slot.open("SELECT I FROM t ORDER BY I");
  EXPECT_EQ(slot.record_count(), 3);
  EXPECT_EQ(slot.value(0), Variant(1));
  slot.move_previous();
  EXPECT_TRUE(slot.begin_of_file());
  EXPECT_EQ(error_of([&] { slot.move_previous(); }), no_current_record);
  EXPECT_EQ(error_of([&] { (void)slot.value(0); }), no_current_record);
  slot.move_last();
  EXPECT_EQ(slot.value(0), Variant(3));
  slot.move_next();
  EXPECT_TRUE(slot.end_of_file());
  EXPECT_EQ(error_of([&] { slot.move_next(); }), no_current_record);
  EXPECT_EQ(error_of([&] { slot.set(0, 1); }), no_current_record);
  EXPECT_EQ(error_of([&] { slot.update(); }), no_current_record);
  slot.move_first();
  EXPECT_EQ(error_of([&] { (void)slot.value(-1); }), item_not_found);
  EXPECT_EQ(error_of([&] { (void)slot.value(1); }), item_not_found);

  slot.close();
  slot.open("SELECT I FROM t WHERE I > 3");
  EXPECT_TRUE(slot.begin_of_file() && slot.end_of_file());
  EXPECT_EQ(error_of([&] { slot.move_first(); }), no_current_record);
  EXPECT_EQ(error_of([&] { slot.move_last(); }), no_current_record);
}

TEST(Slots, StatesThatForbidACall) {
  const TestDatabase database = three_rows();
  Slot slot(database.connection);
  EXPECT_EQ(error_of([&] { slot.close(); }), object_closed);
  EXPECT_EQ(error_of([&] { (void)slot.end_of_file(); }), object_closed);
  EXPECT_EQ(error_of([&] { (void)slot.field(0); }), object_closed);
  slot.open("UPDATE t SET S = 1 WHERE I = 1");  // leaves no rows, so the slot is still closed
  EXPECT_EQ(error_of([&] { slot.open("SELECT Q FROM t"); }), no_such_column);  // and still is

  slot.open("SELECT I FROM t");
  Field field = slot.field(0);
  EXPECT_EQ(error_of([&] { slot.open("SELECT I FROM t"); }), object_open);
  EXPECT_EQ(error_of([&] { slot.set_lock_type(LockType::read_only); }), object_open);
  EXPECT_EQ(error_of([&] { slot.set_active_connection(nullptr); }), object_open);
  database.connection->close();
  EXPECT_EQ(slot.value(0), Variant(1)) << "rows outlive their connection";
  slot.set(0, 5);
  EXPECT_EQ(error_of([&] { slot.update(); }), object_closed);
  database.connection->open();
  EXPECT_EQ(error_of([&] { slot.update(); }), object_closed) << "another session";
  slot.close();
  EXPECT_EQ(error_of([&] { (void)field.value(); }), object_closed);
}

TEST(Slots, ASavedRowMayBeChangedAgain) {
  const TestDatabase database = three_rows();
  Slot slot(database.connection);
  slot.open("SELECT T, I, S FROM t ORDER BY I");
  slot.set(0, "primo");
  slot.set(2, 11);
  slot.update();
  slot.set(0, "Primo");
  slot.update();
  slot.update();  // nothing assigned, nothing written
  slot.move_next();
  slot.set(1, 99);  // lost with the move
  slot.move_next();
  slot.set(2, 30);
  slot.update();
  EXPECT_EQ(database.rows("SELECT I, S, T FROM t ORDER BY I"),
            "1, 11, Primo / 2, 20, due / 3, 30, Null");
}

TEST(Slots, ARowChangedByOthersIsNotOverwritten) {
  for (const auto& [change, outcome] : Table<const char*, std::optional<ErrorNumber>>{
           {"UPDATE t SET T = 'UNO' WHERE I = 1", row_changed},
           {"UPDATE t SET S = 11 WHERE I = 1", row_changed},
           {"UPDATE t SET Y = 1, R = 9 WHERE I = 1", {}},
           {"UPDATE t SET T = 'other' WHERE I = 2", {}}}) {
    const TestDatabase database = three_rows();
    Slot slot(database.connection);
    slot.open("SELECT * FROM t WHERE I = 1");
    slot.set(5, "mine");
    slot.set(1, 12);
    Slot(connect(database.path)).open(change);
    EXPECT_EQ(error_of([&] { slot.update(); }), outcome) << change;
    EXPECT_EQ(slot.value(5), Variant("mine")) << "the assignment stays";
    EXPECT_EQ(database.rows("SELECT I FROM t WHERE T = 'mine' AND S = 12"), outcome ? "" : "1");
  }
}

TEST(Slots, RowsWithoutAnIdentityCannotBeChanged) {
  const TestDatabase database{"CREATE TABLE t (I INTEGER, T TEXT)",
                              "CREATE TABLE w (I INTEGER PRIMARY KEY, T TEXT) WITHOUT ROWID",
                              "CREATE VIEW v AS SELECT I, T FROM t",
                              "CREATE TABLE odd (rowid TEXT, _rowid_ TEXT, T TEXT)",
                              "INSERT INTO t VALUES (1, 'a')",
                              "INSERT INTO w VALUES (1, 'a')",
                              "INSERT INTO odd VALUES ('r', 's', 'a')"};
  const auto change = [&](const char* statement, LockType lock = LockType::optimistic) {
    Slot slot(database.connection);
    slot.set_lock_type(lock);
    slot.open(statement);
    slot.set(0, "b");
    return error_of([&] { slot.update(); });
  };
  for (const char* statement : {"SELECT T FROM v", "SELECT T FROM w", "SELECT DISTINCT T FROM t",
                                "SELECT odd.T FROM t INNER JOIN odd ON t.T = odd.T"}) {
    EXPECT_EQ(change(statement), data_failure) << statement;
  }
  EXPECT_EQ(change("SELECT T FROM t", LockType::read_only), data_failure);
  EXPECT_EQ(change("SELECT T FROM odd"), std::nullopt);
  EXPECT_EQ(database.rows("SELECT * FROM odd"), "r, s, b");
}

}  // namespace
}  // namespace ravelinox::data::testing
