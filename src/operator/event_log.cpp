// The host's log of the set-up. Open only during the call, so others can read it in between.
#include "platform/component_file.hpp"
#include "platform/text_file.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

void cmdl1::Registra(const Variant& Info) {
  TextFile log = TextFile::append_to(component_file("log_InizializzaOrario.txt"));
  log.write_line(joined(Info));
  log.close();
}

}  // namespace ravelinox
