#include <gtest/gtest.h>

#include "ravelinox/variant.hpp"
#include "support/cases.hpp"

namespace ravelinox::testing {
namespace {

TEST(Conversions, WholeNumbers) {
  constexpr auto overflow = ErrorNumber::overflow;
  constexpr auto mismatch = ErrorNumber::type_mismatch;
  for (const auto& [value, number] :
       Table<Variant, std::int32_t>{{Variant(), 0},
                                    {true, -1},
                                    {0.5, 0},
                                    {1.5, 2},
                                    {-2.5, -2},
                                    {" -12.6 ", -13},
                                    {"+7", 7},
                                    {2147483647.4, 2147483647},
                                    {-2147483648.5, -2147483647 - 1}}) {
    EXPECT_EQ(to_int32(value), number);
  }
  for (const auto& [value, error] :
       Table<Variant, ErrorNumber>{{2147483647.5, overflow},
                                   {"9999999999", overflow},
                                   {"", mismatch},
                                   {"inf", mismatch},
                                   {"1,5", mismatch},
                                   {Variant::null(), ErrorNumber::invalid_use_of_null},
                                   {Variant(std::shared_ptr<Object>()), mismatch}}) {
    EXPECT_EQ(error_of([&] { return to_int32(value); }), error);
  }
  EXPECT_EQ(to_int16(32767.0), 32767);
  EXPECT_EQ(error_of([] { return to_int16(32768); }), overflow);
  EXPECT_EQ(error_of([] { return to_uint8(-1); }), overflow);
  EXPECT_EQ(error_of([] { return to_float32(1e300); }), overflow);
}

TEST(Conversions, TextsAndTruths) {
  for (const auto& [value, text] : Table<Variant, const char*>{{Variant(), ""},
                                                               {true, "True"},
                                                               {-5, "-5"},
                                                               {0.1F, "0.1"},
                                                               {12.0, "12"},
                                                               {DateTime(), "1/01/1970 0:00:00"}}) {
    EXPECT_EQ(to_text(value), text);
  }
  EXPECT_EQ(joined(Variant::null()), "");
  EXPECT_THROW((void)to_text(Variant::null()), Error);
  EXPECT_THROW((void)joined(Variant::missing()), Error);
  EXPECT_TRUE(to_boolean("True"));
  EXPECT_FALSE(to_boolean("False") || to_boolean("0"));
  EXPECT_THROW((void)to_boolean("yes"), Error);
}

}  // namespace
}  // namespace ravelinox::testing
