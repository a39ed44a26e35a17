// The settings that every session and every slot of the component uses.
#pragma once

#include <memory>
#include <string>

#include "ravelinox/data.hpp"

namespace ravelinox {

/// Opens a session on a database file: whole results, shared with other programs, 5 seconds'
/// patience.
void open_session(Connection& connection, const std::string& path);

/// Binds a slot to a session, its rows to be changed in place without holding locks. A slot that is
/// still open on a closed session is closed first; 3705 for one open on an open session.
void bind_slot(Recordset& slot, const std::shared_ptr<Connection>& connection);

}  // namespace ravelinox
