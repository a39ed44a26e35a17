// Writes a description of the interface, for the copy that is kept:
//
//   ravelinox_describe idl > src/automation/Ravelinox.idl
//   ravelinox_describe c > include/ravelinox/cmdl1.h
#include <cstdio>
#include <string_view>

#include "automation/description.hpp"

int main(int count, char** arguments) {
  using namespace ravelinox::automation;
  const std::string_view wanted = count == 2 ? arguments[1] : "";
  if (wanted != "idl" && wanted != "c") {
    std::fputs("usage: ravelinox_describe idl|c\n", stderr);
    return 2;
  }
  const std::string text = wanted == "c" ? c_interface() : interface_description();
  return std::fputs(text.c_str(), stdout) < 0 ? 1 : 0;
}
