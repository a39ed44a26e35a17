// A connection is a few settings and, while it is open, the engine's database.
#include "platform/data/paths.hpp"
#include "platform/data/session.hpp"
#include "ravelinox/data.hpp"

namespace ravelinox {
namespace {

void require_closed(const Connection& connection, const char* setting) {
  if (connection.state() == ObjectState::closed) return;
  throw Error(ErrorNumber::object_open,
              "The " + std::string(setting) + " cannot be set while the connection is open (to \"" +
                  connection.connection_string() + "\"); close it first.");
}

}  // namespace

Connection::Connection() : session_(std::make_shared<Session>()) {}

Connection::~Connection() { session_->database.reset(); }

void Connection::set_connection_string(std::string text) {
  require_closed(*this, "connection string");
  session_->connection_string = std::move(text);
}

const std::string& Connection::connection_string() const noexcept {
  return session_->connection_string;
}

void Connection::set_timeout(std::chrono::seconds timeout) { session_->timeout = timeout; }

std::chrono::seconds Connection::timeout() const noexcept { return session_->timeout; }

void Connection::set_cursor_location(CursorLocation location) {
  require_closed(*this, "cursor location");
  session_->cursor_location = location;
}

CursorLocation Connection::cursor_location() const noexcept { return session_->cursor_location; }

void Connection::set_mode(ShareMode mode) {
  require_closed(*this, "mode");
  session_->mode = mode;
}

ShareMode Connection::mode() const noexcept { return session_->mode; }

void Connection::open() {
  require_closed(*this, "file");
  session_->database =
      data::open_database(data::data_source(session_->connection_string), session_->timeout);
}

void Connection::close() {
  if (state() == ObjectState::closed)
    throw Error(ErrorNumber::object_closed, "The connection is not open, so it cannot be closed.");
  session_->database.reset();
}

ObjectState Connection::state() const noexcept {
  return session_->database ? ObjectState::open : ObjectState::closed;
}

}  // namespace ravelinox
