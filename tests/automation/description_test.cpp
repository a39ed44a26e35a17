#include "automation/description.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace ravelinox::automation {
namespace {

TEST(Description, IsTheCopyThatIsInstalled) {
  std::ifstream file(RAVELINOX_IDL);
  const std::string kept((std::istreambuf_iterator<char>(file)), {});
  EXPECT_EQ(interface_description(), kept)
      << "After a change of the member table: ravelinox_describe > src/automation/Ravelinox.idl";
}

}  // namespace
}  // namespace ravelinox::automation
