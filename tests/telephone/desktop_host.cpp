// A host for desktop_check. Reads lines: "caller|text" is a message, anything else asks whether the
// telephone is open.
#include <iostream>
#include <string>

#include "ravelinox/platform.hpp"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  ravelinox::TelephoneForm& telephone = ravelinox::frmTelefonoINdll();
  ravelinox::platform().telephone_window = ravelinox::desktop_telephone(argv[1]);
  for (std::string line; std::getline(std::cin, line);) {
    const std::size_t bar = line.find('|');
    if (bar == std::string::npos) {
      std::cout << (telephone.is_open() ? "open" : "closed") << std::endl;
    } else {
      telephone.RiceviComunicazione(line.substr(0, bar), line.substr(bar + 1));
    }
  }
}
