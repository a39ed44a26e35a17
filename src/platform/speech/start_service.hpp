#pragma once

#include <string>

#include "platform/speech/line_channel.hpp"

namespace ravelinox {

/// Runs the service's program, which puts the service into the background and ends. The service
/// gets nothing of the host: no descriptor, no terminal, no signal setting. Fails when the program
/// is missing, fails itself or has not ended by the deadline (then it is killed).
void start_service(const std::string& program, const std::string& socket_path, Deadline deadline);

}  // namespace ravelinox
