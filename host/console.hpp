#pragma once

#include <ostream>

namespace ravelinox::host {

/// Where the program speaks. Tests hand in text streams, and never a desktop of the machine's.
struct Console {
  std::ostream& out;
  std::ostream& err;
  bool terminal = false;  ///< `out` is a terminal, so lines may be drawn in place
  bool desktop = false;   ///< somebody sits before a screen, where a window and a voice are welcome
};

}  // namespace ravelinox::host
