// The process around the program: its streams, and whether people sit before it.
#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "host/program.hpp"

namespace {

bool is_set(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

int main(int argc, char** argv) {
  ravelinox::host::Console console{std::cout, std::cerr, isatty(STDOUT_FILENO) != 0,
                                   is_set("DISPLAY") || is_set("WAYLAND_DISPLAY")};
  return ravelinox::host::run_program(argc, argv, console);
}
