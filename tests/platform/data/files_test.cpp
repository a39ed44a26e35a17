#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "platform/data/sqlite/file.hpp"
#include "platform/data/test_database.hpp"

namespace ravelinox::data::testing {
namespace {

namespace fs = std::filesystem;

/// Another program's connection to the file, which may hold locks.
class OtherProgram : public File {
 public:
  explicit OtherProgram(const std::string& path)
      : File(path, path, SQLITE_OPEN_READWRITE, std::chrono::milliseconds(0)) {}
};

/// One row, in a file with a rollback journal, as other programs leave them, when `foreign`.
struct OneTable : TestDatabase {
  explicit OneTable(bool foreign = false)
      : TestDatabase{"CREATE TABLE t (N INTEGER, T TEXT)", "INSERT INTO t VALUES (1, 'a')"} {
    if (!foreign) return;
    connection->close();
    EXPECT_EQ(OtherProgram(path).first_cell("PRAGMA journal_mode = DELETE"), "delete");
    connection->open();
  }
};

TEST(Files, PathsInConnectionStrings) {
  const OneTable database;
  std::string backslashes = database.path;
  std::ranges::replace(backslashes, '/', '\\');
  const std::string odd = database.folder.file("50% of; that=file?.db");
  fs::copy_file(database.path, odd);
  using namespace std::string_literals;
  for (const auto& [string, error] : Table<std::string, std::optional<ErrorNumber>>{
           {"Provider = Some.Engine.4.0;data SOURCE=" + database.path, {}},
           {"Data source = " + backslashes, {}},
           {"x=y; Data source =   " + odd, {}},
           {"Data source = " + database.folder.file("missing"), data_failure},
           {"Provider = x", data_failure},
           {"Data source = ", data_failure},
           {"Data source = " + database.path + "\0x"s, data_failure}}) {
    Connection connection;
    connection.set_connection_string(string);
    EXPECT_EQ(error_of([&] { connection.open(); }), error) << string;
    EXPECT_EQ(connection.state() == ObjectState::closed, error.has_value());
    if (error) continue;
    EXPECT_EQ(error_of([&] { connection.set_connection_string("x"); }), object_open);
    EXPECT_EQ(error_of([&] { connection.open(); }), object_open);
  }
  EXPECT_FALSE(fs::exists(database.folder.file("missing")));
}

TEST(Files, AnIdleSlotHoldsNoLockAndSeesOthersRowsAtOnce) {
  for (const bool foreign : {false, true}) {
    const OneTable database(foreign);
    Slot open_slot(database.connection);
    open_slot.open("SELECT * FROM t");
    EXPECT_EQ(error_of([&] { database.change("UPDATE t SET N = 'x'"); }), type_mismatch);
    OtherProgram(database.path).execute("BEGIN EXCLUSIVE; UPDATE t SET N = N + 1; COMMIT");
    EXPECT_EQ(database.rows("SELECT N FROM t"), "2");
    database.change("UPDATE t SET N = N + 1");
    EXPECT_EQ(Slot(connect(database.path)).rows("SELECT N FROM t"), "3");
  }
}

TEST(Files, AForeignFileTurnsToTheLogAtItsFirstUnhinderedChange) {
  const OneTable database(true);
  const auto journal = [&] {
    return OtherProgram(database.path).first_cell("PRAGMA journal_mode");
  };
  EXPECT_EQ(database.rows("SELECT N FROM t"), "1");
  EXPECT_EQ(journal(), "delete") << "reading changes nothing";
  {
    OtherProgram other(database.path);
    other.execute("BEGIN; SELECT * FROM t");
    EXPECT_EQ(error_of([&] { database.change("UPDATE t SET N = 2"); }), data_failure);
    EXPECT_EQ(journal(), "delete") << "a reader is in the way";
  }
  database.change("UPDATE t SET N = 3");
  database.change("UPDATE t SET N = 4");
  EXPECT_EQ(journal(), "wal");
  EXPECT_EQ(database.rows("SELECT N FROM t"), "4");
}

TEST(Files, TablesChangedByOthersAreSeenOrMissed) {
  const TestDatabase database{"CREATE TABLE t (N INTEGER, T TEXT, U TEXT)",
                              "INSERT INTO t VALUES (1, 'a', 'b')"};
  for (const auto& [definition, expected, error] :
       Table<const char*, const char*, std::optional<ErrorNumber>>{
           {"SELECT 1", "1, a, b", {}},
           {"ALTER TABLE t ADD COLUMN V TEXT DEFAULT 'c'", "1, a, b, c", {}},
           {"ALTER TABLE t DROP COLUMN U", "1, a, c", {}},
           {"ALTER TABLE t RENAME COLUMN T TO W", "1, a, c", no_such_column},
           {"ALTER TABLE t RENAME COLUMN W TO T", "1, a, c", {}},
           {"ALTER TABLE t RENAME TO s; CREATE VIEW t AS SELECT T, N FROM s", "a, 1",
            statement_not_understood},  // a view cannot be changed
           {"DROP VIEW t", "", no_such_table}}) {
    OtherProgram(database.path).execute(definition);
    std::string rows;
    EXPECT_EQ(error_of([&] {
                rows = database.rows("SELECT * FROM t");
                EXPECT_EQ(database.rows("SELECT N FROM t WHERE T = 'a'"), "1");
                database.change("UPDATE t SET T = 'a'");
              }),
              error)
        << definition;
    EXPECT_EQ(rows, expected) << definition;
  }
}

TEST(Files, CreationFailsWithoutATrace) {
  const TemporaryFolder folder;
  const auto creation = [](const std::string& path, std::string_view definition) {
    return error_of([&] { create_database(path, std::array{definition}); });
  };
  EXPECT_EQ(creation(folder.file("new.db"), "CREATE TABEL t (N)"), data_failure);
  EXPECT_TRUE(fs::is_empty(folder.path()));
  for (const auto& [path, error] : Table<std::string, std::optional<ErrorNumber>>{
           {folder.file("none/new.db"), path_not_found},
           {"", bad_file_name},
           {folder.path().string(), file_already_exists},
           {folder.file("new.db"), {}},
           {folder.file("new.db"), file_already_exists}}) {
    EXPECT_EQ(creation(path, "CREATE TABLE t (N)"), error) << path;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST(Files, RowsAreAppendedAllOrNone) {
  const TestDatabase database{"CREATE TABLE t (S SMALLINT, T TEXT)", "CREATE TABLE u (N)"};
  const std::vector<Variant> good{2.5, "è"};
  for (const auto& [table, values, error] :
       Table<const char*, std::vector<Variant>, std::optional<ErrorNumber>>{
           {"t", {2}, type_mismatch},
           {"t", {"x", "è"}, type_mismatch},
           {"t", {40000, "è"}, overflow},
           {"missing", good, no_such_table}}) {
    RowWriter writer(database.path);
    writer.append("t", good);
    EXPECT_EQ(error_of([&] { writer.append(table, values); }), error);
    EXPECT_EQ(error_of([&] { writer.commit(); }), object_closed);
  }
  RowWriter(database.path).append("t", good);
  EXPECT_EQ(database.rows("SELECT * FROM t"), "") << "nothing stays without commit";

  RowWriter writer(database.path);
  writer.append("T", good);
  writer.append("u", std::array{Variant::null()});
  EXPECT_EQ(database.rows("SELECT * FROM t"), "") << "nothing is seen before";
  writer.commit();
  EXPECT_EQ(database.rows("SELECT * FROM t"), "2, è");
  EXPECT_EQ(error_of([&] { writer.append("t", good); }), object_closed);
}

}  // namespace
}  // namespace ravelinox::data::testing
