#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <set>

#include "platform/data/sqlite/file.hpp"
#include "platform/data/test_database.hpp"

namespace ravelinox::data::testing {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

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
  [[nodiscard]] std::string bytes() const { return folder.bytes("test.db"); }
};

[[nodiscard]] Names names_in(const fs::path& folder) {
  Names names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

TEST(Files, PathsInConnectionStrings) {
  const OneTable database;
  std::string backslashes = database.path;
  std::ranges::replace(backslashes, '/', '\\');
  const std::string odd = database.folder.file("50% of; that=file?.db");
  fs::copy_file(database.path, odd);
  using namespace std::string_literals;
  for (const auto& [string, opens] :
       Table<std::string, bool>{{"Provider = Some.Engine.4.0;Data source = " + database.path, true},
                                {"data SOURCE=" + database.path, true},
                                {"Data source = " + backslashes, true},
                                {"x=y; Data source =   " + odd, true},
                                {"Data source = " + database.folder.file("missing"), false},
                                {"", false},
                                {"Provider = x", false},
                                {"Data source = ", false},
                                {"Data source = " + database.path + "\0x"s, false}}) {
    Connection connection;
    connection.set_connection_string(string);
    EXPECT_EQ(error_of([&] { connection.open(); }),
              opens ? std::nullopt : std::optional(data_failure))
        << string;
    EXPECT_EQ(connection.state() == ObjectState::open, opens);
    if (!opens) continue;
    EXPECT_EQ(error_of([&] { connection.set_connection_string("x"); }), object_open);
    EXPECT_EQ(error_of([&] { connection.open(); }), object_open);
  }
  EXPECT_FALSE(fs::exists(database.folder.file("missing")));
}

/// The call's outcome without the rights of the superuser, in a process of its own.
int as_ordinary_user(const std::function<bool()>& call) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && seteuid(nobody) != 0) _exit(2);
    bool good = false;
    const auto error = error_of([&] { good = call(); });
    _exit(good && !error ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Files, ReadingNeedsNoRightToWriteAndLeavesNoTrace) {
  constexpr auto read = fs::perms(0444);
  constexpr auto sealed = fs::perms(0555);
  constexpr auto open = fs::perms(0777);
  for (const auto& [foreign, file, folder] : Table<bool, fs::perms, fs::perms>{
           {false, read, sealed}, {true, read, sealed}, {true, read, open}}) {
    const OneTable database(foreign);
    database.connection->close();
    const std::string before = database.bytes();
    fs::permissions(database.path, file);
    fs::permissions(database.folder.path(), folder);
    const int outcome = as_ordinary_user([&] {
      Slot slot(connect(database.path));
      return slot.rows("SELECT * FROM t") == "1|a" &&
             error_of([&] { slot.open("UPDATE t SET N = 2"); }) == data_failure;
    });
    EXPECT_EQ(outcome, 0) << foreign << " file " << static_cast<int>(file) << " folder "
                          << static_cast<int>(folder);
    fs::permissions(database.folder.path(), open);
    EXPECT_EQ(database.bytes(), before);
    EXPECT_EQ(names_in(database.folder.path()), Names{"test.db"});
  }
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
           {"SELECT 1", "1|a|b", {}},
           {"ALTER TABLE t ADD COLUMN V TEXT DEFAULT 'c'", "1|a|b|c", {}},
           {"ALTER TABLE t DROP COLUMN U", "1|a|c", {}},
           {"ALTER TABLE t RENAME COLUMN T TO W", "1|a|c", no_such_column},
           {"ALTER TABLE t RENAME COLUMN W TO T", "1|a|c", {}},
           {"ALTER TABLE t RENAME TO s; CREATE VIEW t AS SELECT T, N FROM s", "a|1",
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
  for (const auto& [path, definition, error] :
       Table<std::string, std::string_view, std::optional<ErrorNumber>>{
           {folder.file("new.db"), "CREATE TABEL t (N)", data_failure},
           {folder.file("none/new.db"), "CREATE TABLE t (N)", path_not_found},
           {"", "CREATE TABLE t (N)", bad_file_name},
           {folder.path().string(), "CREATE TABLE t (N)", file_already_exists},
           {folder.file("new.db"), "CREATE TABLE t (N)", {}},
           {folder.file("new.db"), "CREATE TABLE t (N)", file_already_exists}}) {
    EXPECT_EQ(error_of([&] { create_database(path, std::array{definition}); }), error) << path;
    EXPECT_EQ(names_in(folder.path()).empty(), !fs::exists(folder.file("new.db"))) << path;
  }
  EXPECT_EQ(names_in(folder.path()), Names{"new.db"});
}

TEST(Files, RowsAreAppendedAllOrNone) {
  const TestDatabase database{"CREATE TABLE t (N INTEGER, S SMALLINT, R REAL, B BOOLEAN, T TEXT)",
                              "CREATE TABLE u (N)"};
  const std::vector<Variant> good{1, 2.5, 0.1F, true, "è"};
  for (const auto& [table, values, error] :
       Table<const char*, std::vector<Variant>, std::optional<ErrorNumber>>{
           {"t", {1, 2.5, 0.1F, true}, type_mismatch},
           {"t", {"x", 2.5, 0.1F, true, "è"}, type_mismatch},
           {"t", {1, 40000, 0.1F, true, "è"}, overflow},
           {"missing", good, no_such_table}}) {
    EXPECT_EQ(error_of([&] {
                RowWriter writer(database.path);
                writer.append("t", good);
                writer.append(table, values);
                writer.commit();
              }),
              error);
  }
  { RowWriter(database.path).append("t", good); }
  EXPECT_EQ(database.rows("SELECT * FROM t"), "") << "nothing stays without commit";

  RowWriter writer(database.path);
  writer.append("T", good);
  writer.append("u", std::array{Variant::null()});
  EXPECT_EQ(database.rows("SELECT * FROM t"), "") << "nothing is seen before";
  writer.commit();
  EXPECT_EQ(database.rows("SELECT * FROM t"), "1|2|0.1|True|è");
  EXPECT_EQ(error_of([&] { writer.append("t", good); }), object_closed);
}

}  // namespace
}  // namespace ravelinox::data::testing
