// Writes the interface description, for the copy that is kept beside this file.
#include <cstdio>

#include "automation/description.hpp"

int main() {
  return std::fputs(ravelinox::automation::interface_description().c_str(), stdout) < 0 ? 1 : 0;
}
