// A file is judged by its status and by the engine, never by reading it here: closing a file that
// the engine has open elsewhere in the process would drop the engine's locks on it.
#include "platform/data/sqlite/opening.hpp"

#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "platform/data/sqlite/authorizer.hpp"
#include "platform/data/sqlite/functions.hpp"

namespace ravelinox::data {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& path, const std::string& cause) {
  throw Error(ErrorNumber::data_failure, "The database file \"" + path + "\" " + cause + ".");
}

void require_usable(const std::string& path) {
  if (path.empty()) fail(path, "cannot be opened, the path is empty");
  if (path.find('\0') != std::string::npos) fail(path, "cannot be opened, the path holds a NUL");
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) fail(path, "is not there (" + error.message() + ")");
  if (fs::is_directory(status)) fail(path, "is a folder");
  if (!fs::is_regular_file(status)) fail(path, "is no ordinary file");
  const auto size = fs::file_size(path, error);
  if (size == 0) fail(path, "is empty");
  // A part of a page: cut off in a copy, unless a program was interrupted and left its journal.
  constexpr std::uintmax_t smallest_page = 512;
  const bool has_journal = fs::exists(path + "-wal", error) || fs::exists(path + "-journal", error);
  if (size % smallest_page != 0 && !has_journal) fail(path, "is damaged, or no database");
}

/// The engine gives some names a meaning of their own; a folder before them takes it away.
[[nodiscard]] std::string literal_name(const std::string& path) {
  const bool special = path.starts_with(':') || path.starts_with("file:");
  return special ? "./" + path : path;
}

[[nodiscard]] std::string as_unchanging(const std::string& path) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::string_view special = "%?#";
  std::string uri = "file:";
  for (const char c : path) {
    if (special.find(c) == std::string_view::npos) {
      uri += c;
    } else {
      uri += {'%', digits[static_cast<unsigned char>(c) >> 4], digits[c & 0xF]};
    }
  }
  return uri + "?immutable=1";
}

void distrust_definitions(File& file) {
  sqlite3_db_config(file.handle(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(file.handle(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(file.handle(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
}

/// Whether the file's header asks for a write-ahead log. Read through the engine's own handle.
[[nodiscard]] bool asks_for_log(const File& file) {
  constexpr sqlite3_int64 version_offset = 18;
  sqlite3_file* bytes = nullptr;
  sqlite3_file_control(file.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &bytes);
  if (bytes == nullptr || bytes->pMethods == nullptr) return false;
  char version = 0;
  return bytes->pMethods->xRead(bytes, &version, 1, version_offset) == SQLITE_OK && version == 2;
}

[[nodiscard]] bool may_write(const fs::path& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

/// Whether the file has no log with changes beside it, and we may not make one.
[[nodiscard]] bool is_sealed(const std::string& path) {
  std::error_code error;
  const auto log_size = fs::file_size(path + "-wal", error);
  if (!error && log_size > 0) return false;
  return !may_write(path) || !may_write(fs::absolute(path).parent_path());
}

}  // namespace

std::unique_ptr<File> open_file(const std::string& path, std::chrono::milliseconds patience) {
  require_usable(path);
  auto file = std::make_unique<File>(literal_name(path), path, SQLITE_OPEN_READWRITE, patience);
  if (asks_for_log(*file) && is_sealed(path))
    file = std::make_unique<File>(as_unchanging(path), path, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI,
                                  patience);
  distrust_definitions(*file);
  (void)file->first_cell("SELECT count(*) FROM sqlite_schema");  // the first read of the file
  apply_settings(*file);
  add_functions(*file);
  add_authorizer(*file);
  return file;
}

std::unique_ptr<File> open_new_file(const std::string& path) {
  return std::make_unique<File>(literal_name(path), path,
                                SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                                std::chrono::milliseconds(0));
}

void apply_settings(File& file) {
  // Freed space need not be blanked: a timetable holds no secrets.
  file.execute("PRAGMA cache_size = -2000; PRAGMA secure_delete = OFF");
  // With a write-ahead log a power cut costs the last moments, never the file's wholeness.
  if (has_write_ahead_log(file)) file.execute("PRAGMA synchronous = NORMAL");
}

bool has_write_ahead_log(File& file) { return file.first_cell("PRAGMA journal_mode") == "wal"; }

}  // namespace ravelinox::data
