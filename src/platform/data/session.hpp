// What a connection and the slots bound to it share.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/data/engine.hpp"
#include "ravelinox/data.hpp"

namespace ravelinox {

class Connection::Session {
 public:
  std::string connection_string;
  std::chrono::seconds timeout{15};
  CursorLocation cursor_location = CursorLocation::client;
  ShareMode mode = ShareMode::deny_none;

  std::shared_ptr<data::Database> database;  ///< none while closed
};

}  // namespace ravelinox
