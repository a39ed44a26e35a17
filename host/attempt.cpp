// What a host does after a failed call: say it, close what stayed open, go on.
#include "host/attempt.hpp"

#include <array>
#include <cstdint>
#include <iomanip>
#include <sstream>

namespace ravelinox::host {

std::string describe(const Error& error) {
  std::ostringstream text;
  text << "error ";
  if (error.number() < 0) {
    text << "0x" << std::hex << std::uppercase << static_cast<std::uint32_t>(error.number());
  } else {
    text << error.number();
  }
  text << ": " << error.what();
  return text.str();
}

void close_open_slots(cmdl1& component) {
  const std::array slots{&component.DLLRS,      &component.DLLRS2, &component.DLLRS3,
                         &component.DLLRS4,     &component.DLLRS5, &component.DLLRSMovimL,
                         &component.DLLRSMovimS};
  for (Created<Recordset>* slot : slots) {
    if (slot->has_object() && (*slot)->state() == ObjectState::open) (*slot)->close();
  }
}

void Attempt::recover(std::string_view what, const Error& error) {
  ++failures_;
  close_open_slots(component_);
  say_(std::string(what) + ": " + describe(error));
}

}  // namespace ravelinox::host
