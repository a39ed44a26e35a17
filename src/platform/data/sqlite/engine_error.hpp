// The engine's return codes as the system's errors.
#pragma once

#include <string>

#include "ravelinox/error.hpp"

namespace ravelinox::data {

/// `subject` names what was worked on ("The database file \"x.db\""); `detail` is the engine's own
/// text, kept for those who look into the file.
[[nodiscard]] Error engine_error(int code, const std::string& subject, const std::string& detail);

}  // namespace ravelinox::data
