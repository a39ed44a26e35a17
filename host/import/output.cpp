// Writing both databases or neither.
#include "host/import/output.hpp"

#include <system_error>

#include "host/station_session.hpp"
#include "ravelinox/database.hpp"
#include "ravelinox/error.hpp"

namespace ravelinox::host {
namespace {

std::filesystem::path unfinished(const std::filesystem::path& database) {
  return database.string() + ".new";
}

/// The database and what the engine may keep beside it. Failures do not matter here: what cannot
/// be removed is met again when the place is needed.
void remove_database(const std::filesystem::path& database) {
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
    std::filesystem::remove(database.string() + suffix, ignored);
  }
}

void fill(const std::filesystem::path& path, std::initializer_list<Rows> parts) {
  RowWriter writer(path.string());
  for (const auto& rows : parts) {
    for (const auto& [table, values] : rows) writer.append(table, values);
  }
  writer.commit();
}

void put_in_place(const std::filesystem::path& database) {
  remove_database(database);
  std::error_code error;
  std::filesystem::rename(unfinished(database), database, error);
  if (!error) return;
  throw Error(ErrorNumber::permission_denied, "The database " + database.string() +
                                                  " cannot be put in place: " + error.message() +
                                                  ". Choose another folder.");
}

}  // namespace

Output::Output(std::filesystem::path folder, bool force)
    : folder_(std::move(folder)),
      station_(folder_ / station_file_name),
      line_(folder_ / line_file_name) {
  for (const auto& database : {station_, line_}) {
    if (force || !std::filesystem::exists(database)) continue;
    throw Error(ErrorNumber::file_already_exists,
                "The database " + database.string() +
                    " is there already: choose another folder, or ask for it to be replaced.");
  }
}

Output::~Output() {
  remove_database(unfinished(station_));
  remove_database(unfinished(line_));
  std::error_code ignored;
  // Removes an empty folder only, so a finished import keeps its own.
  if (made_folder_) std::filesystem::remove(folder_, ignored);
}

void Output::write(const Rows& station, std::initializer_list<Rows> line) {
  std::error_code error;
  made_folder_ = std::filesystem::create_directories(folder_, error);
  if (error) {
    throw Error(ErrorNumber::path_access_error,
                "The folder " + folder_.string() + " cannot be made: " + error.message() + ".");
  }
  remove_database(unfinished(station_));
  remove_database(unfinished(line_));
  create_station_database(unfinished(station_).string());
  create_line_database(unfinished(line_).string());
  fill(unfinished(station_), {station});
  fill(unfinished(line_), line);
  put_in_place(line_);
  put_in_place(station_);
}

}  // namespace ravelinox::host
