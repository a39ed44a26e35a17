// Opens and closes the two database sessions and binds the recordset slots to them.
#include <chrono>
#include <string>

#include "core/session_settings.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

void close_session(Created<Connection>& session) {
  if (session->state() == ObjectState::open) session->close();
  session.clear();
}

/// What precedes the last backslash, which it keeps; nothing without one.
std::string folder_of(const std::string& path) {
  const std::size_t separator = path.rfind('\\');
  return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

}  // namespace

void open_session(Connection& connection, const std::string& path) {
  connection.set_connection_string("Data source = " + path);
  connection.set_timeout(std::chrono::seconds(5));
  connection.set_cursor_location(CursorLocation::client);
  connection.set_mode(ShareMode::deny_none);
  connection.open();
}

void bind_slot(Recordset& slot, const std::shared_ptr<Connection>& connection) {
  // A failure may have left the slot open on a session that was closed since: its rows are over.
  const bool left_behind = slot.state() == ObjectState::open && slot.active_connection() &&
                           slot.active_connection()->state() == ObjectState::closed;
  if (left_behind) slot.close();
  slot.set_active_connection(connection);
  slot.set_lock_type(LockType::optimistic);
}

void cmdl1::Connetti_DBstazione_DLL() {
  open_session(*DLLCN, joined(DB_stazione));
  for (auto* slot : {&DLLRS, &DLLRS2, &DLLRSMovimS}) bind_slot(**slot, DLLCN.get());
}

void cmdl1::Imposta_proprieta_pds() {
  constexpr std::int16_t line_database_position = 4;
  DLLRS->open("SELECT * FROM proprieta");
  DB_linea = DLLRS->field(line_database_position).value();
  DLLRS->close();
}

void cmdl1::Connetti_DBlinea_DLL() {
  open_session(*DLLCN2, folder_of(joined(DB_stazione)) + joined(DB_linea));
  for (auto* slot : {&DLLRS3, &DLLRS4, &DLLRSMovimL, &DLLRS5}) bind_slot(**slot, DLLCN2.get());
}

void cmdl1::Disconnetti_DB() {
  close_session(DLLCN);
  close_session(DLLCN2);
}

}  // namespace ravelinox
