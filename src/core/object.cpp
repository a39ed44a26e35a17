#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

void cmdl1::VisMovimento() {}

}  // namespace ravelinox
