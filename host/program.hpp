#pragma once

#include "host/console.hpp"

namespace ravelinox::host {

/// The whole program but for the process around it. Exit codes: 0, 1 for a failure that was said
/// in a sentence, 2 for a wrong command line, 130 after an interruption.
int run_program(int argc, const char* const* argv, Console& console);

}  // namespace ravelinox::host
