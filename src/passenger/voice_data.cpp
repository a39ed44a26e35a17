// Whether the voice that the announcements are meant for is installed beside the component.
#include "platform/component_file.hpp"
#include "platform/text_file.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

bool cmdl1::VerificaAs() { return can_be_read(component_file("Loq.Roberto.tts")); }

}  // namespace ravelinox
