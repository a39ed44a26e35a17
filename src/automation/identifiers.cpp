#include "automation/identifiers.hpp"

#include <array>
#include <cstdio>

namespace ravelinox::automation {

std::string text_of(const rlx_guid& id) {
  std::array<char, 39> text{};
  const auto& d = id.data4;
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(id.data1), static_cast<unsigned>(id.data2),
                static_cast<unsigned>(id.data3), d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
  return text.data();
}

}  // namespace ravelinox::automation
