// New files get a write-ahead log and small pages: a commit writes whole pages, and the rows that
// one call changes are few.
#include "platform/data/create_database.hpp"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/data/paths.hpp"
#include "platform/data/sqlite/opening.hpp"

namespace ravelinox {
namespace {

/// Takes the path for a new, empty file, or fails if anything is there.
void claim(const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos)
    throw Error(ErrorNumber::bad_file_name, "\"" + path + "\" is no name for a database file.");
  if (std::FILE* file = std::fopen(path.c_str(), "wbx")) {
    (void)std::fclose(file);
    return;
  }
  const std::string shown = "The database file \"" + path + "\" cannot be created: ";
  const std::string cause = std::generic_category().message(errno);
  switch (errno) {
    case EEXIST:
      throw Error(ErrorNumber::file_already_exists, shown + "there is a file already.");
    case ENOENT:
    case ENOTDIR:
      throw Error(ErrorNumber::path_not_found, shown + "its folder is missing.");
    default:
      throw Error(ErrorNumber::data_failure, shown + cause + ".");
  }
}

void remove_quietly(const std::string& path) noexcept {
  for (const char* ending : {"", "-wal", "-shm", "-journal"}) {
    std::error_code ignored;
    std::filesystem::remove(path + ending, ignored);
  }
}

void define(const std::string& path, std::span<const std::string_view> statements) {
  const auto file = data::open_new_file(path);
  file->execute("PRAGMA page_size = 1024; PRAGMA auto_vacuum = NONE; PRAGMA journal_mode = WAL");
  file->execute("BEGIN");
  for (const std::string_view statement : statements) file->execute(std::string(statement));
  file->execute("COMMIT");
}

}  // namespace

void create_database(const std::string& path, std::span<const std::string_view> statements) {
  const std::string name = data::with_forward_slashes(path);
  claim(name);
  try {
    define(name, statements);
  } catch (...) {
    remove_quietly(name);
    throw;
  }
}

}  // namespace ravelinox
