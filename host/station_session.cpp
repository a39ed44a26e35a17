// From a path to an open station: which file it is, and the order of calls that opens it.
#include "host/station_session.hpp"

#include <algorithm>
#include <array>
#include <vector>

#include "host/refusal.hpp"
#include "host/rows.hpp"

namespace ravelinox::host {
namespace {

namespace fs = std::filesystem;

std::uint8_t check(const fs::path& file) {
  return cmdl1().VerificaDB(component_path(file), Variant::missing());
}

std::vector<fs::path> station_databases_in(const fs::path& folder) {
  std::vector<fs::path> found;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file() && check(entry.path()) == usable) found.push_back(entry.path());
  }
  std::sort(found.begin(), found.end());
  return found;
}

fs::path only_one_in(const fs::path& folder) {
  const std::vector<fs::path> found = station_databases_in(folder);
  if (found.empty()) {
    throw Refusal("The folder " + folder.string() +
                  " holds no usable station database; make one with \"ravelinox import\" or "
                  "\"ravelinox new\".");
  }
  if (found.size() > 1) {
    throw Refusal("The folder " + folder.string() + " holds several station databases; name one: " +
                  found[0].string() + " or " + found[1].string() + ".");
  }
  return found.front();
}

}  // namespace

std::string component_path(const fs::path& path) {
  std::string text = fs::absolute(path).lexically_normal().string();
  std::replace(text.begin(), text.end(), '/', '\\');
  return text;
}

std::string_view reason_unusable(std::uint8_t check_result) {
  static constexpr std::array<std::string_view, 8> reasons{
      "cannot be opened as a database",   "lacks a readable table banco",
      "lacks a readable table deviatoi",  "lacks a readable table enti",
      "lacks a readable table finestre",  "lacks a readable table itinerari",
      "lacks a readable table proprieta", "is a usable station database"};
  return reasons.at(check_result);
}

fs::path find_station_database(const fs::path& given) {
  if (!fs::exists(given)) throw Refusal("There is no file or folder " + given.string() + ".");
  if (fs::is_directory(given)) return only_one_in(given);
  const std::uint8_t result = check(given);
  if (result != usable) {
    throw Refusal("The file " + given.string() + " " + std::string(reason_unusable(result)) + ".");
  }
  return given;
}

StationSession::StationSession(const fs::path& database)
    : folder_(fs::absolute(database).parent_path()) {
  try {
    open_sessions(database);
  } catch (...) {
    component.Disconnetti_DB();
    throw;
  }
}

StationSession::~StationSession() {
  try {
    component.Disconnetti_DB();
  } catch (const Error&) {
    // Nothing is left to do for a session that cannot be closed; every row is final already.
  }
}

void StationSession::open_sessions(const fs::path& database) {
  component.DB_stazione = component_path(database);
  component.Connetti_DBstazione_DLL();
  each_row(*component.DLLRS2, "SELECT Nome_Stazione FROM proprieta",
           [&](Recordset& row) { name_ = text_at(row, 0); });
  if (name_.empty()) {
    throw Refusal("The station database " + database.string() +
                  " names no station: its table proprieta needs a row.");
  }
  component.Imposta_proprieta_pds();
  component.Connetti_DBlinea_DLL();
  component.Nome_PdS = name_;
  timetable_.set_active_connection(component.DLLCN2.get());
}

}  // namespace ravelinox::host
