#include <gtest/gtest.h>

#include "ravelinox/cmdl1.hpp"
#include "support/cases.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;

TEST(CheckLetter, WorkedExamplesAndLimits) {
  cmdl1 engine;
  const std::string longest(255, 'a');
  const std::string high_late = std::string(128, 'a') + "\u00FF";  // 255 times 129 passes 32767
  const std::string high_early = std::string(127, 'a') + "\u00FF";
  for (const auto& [code, letter] : Table<Variant, const char*>{
           {"abc", "S"}, {1234, "Q"}, {"A", "N"}, {"\u20AC", "Y"}, {"cba", "O"}}) {
    EXPECT_EQ(engine.CheckSumDigit(code), letter) << joined(code);
  }
  for (const auto& [code, error] :
       Table<Variant, std::optional<ErrorNumber>>{{longest, {}},
                                                  {high_early, {}},
                                                  {"", overflow},
                                                  {longest + "a", overflow},
                                                  {high_late, overflow},
                                                  {Variant::null(), invalid_use_of_null}}) {
    EXPECT_EQ(error_of([&] { return engine.CheckSumDigit(code); }), error);
  }
}

}  // namespace
}  // namespace ravelinox::testing
