#include "automation/description.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace ravelinox::automation {
namespace {

TEST(Descriptions, AreTheCopiesThatAreInstalled) {
  for (const auto& [kept, written] : {std::pair{RAVELINOX_IDL, interface_description()},
                                      std::pair{RAVELINOX_C_INTERFACE, c_interface()}}) {
    std::ifstream file(kept);
    EXPECT_EQ(written, std::string(std::istreambuf_iterator<char>(file), {}))
        << "after a change of the member table ravelinox_describe writes it anew";
  }
}

}  // namespace
}  // namespace ravelinox::automation
