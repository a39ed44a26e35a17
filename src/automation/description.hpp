#pragma once

#include <string>

namespace ravelinox::automation {

/// The written description of the library in the interface description language: the enumeration
/// of the speech platform, the dual interface with its slots in order, the class.
[[nodiscard]] std::string interface_description();

/// The dual interface as a header for hosts in C and C++.
[[nodiscard]] std::string c_interface();

}  // namespace ravelinox::automation
