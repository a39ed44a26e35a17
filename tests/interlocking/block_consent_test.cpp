#include <gtest/gtest.h>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

TEST(BlockConsent, IsGrantedByTheCodeOfTheAskedEnd) {
  for (const auto& [first_code, second_code, from_first, from_second] :
       Table<Variant, Variant, bool, bool>{{"270SV", "180", true, false},
                                           {"", "270SV", false, true},
                                           {"270sv", "270SV ", false, false},
                                           {Variant::null(), "0", true, false}}) {
    Station station("");
    append(station.line_file, "linea", 1, "Empoli", "Signa", 1.0, 1, first_code, "V", false, "",
           true, "", second_code, "V", false);
    station.engine.VerRich_fs("Empoli", "Signa");
    EXPECT_EQ(station.engine.RispRich_fs, from_first) << joined(first_code);
    station.engine.VerRich_fs("SIGNA", "empoli");
    EXPECT_EQ(station.engine.RispRich_fs, from_second) << joined(second_code);
    EXPECT_EQ(error_of([&] { station.engine.VerRich_fs("Empoli", "Siena"); }),
              ErrorNumber::no_current_record);
    EXPECT_FALSE(station.engine.RispRich_fs);
    EXPECT_EQ(station.engine.DLLRS3->state(), ObjectState::open);
  }
}

}  // namespace
}  // namespace ravelinox::testing
