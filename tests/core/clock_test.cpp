#include <gtest/gtest.h>

#include "ravelinox/cmdl1.hpp"
#include "support/cases.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;

struct Civil {
  std::uint8_t hour, minute, second, day, month;
  std::int16_t year;
};

std::int32_t timestamp_of(const Civil& c) {
  return cmdl1().MkTime(c.hour, c.minute, c.second, c.day, c.month, c.year);
}

TEST(Clock, TimestampsAndMomentsAreInverse) {
  for (const auto& [civil, timestamp, moment] : Table<Civil, std::int32_t, const char*>{
           {Civil{0, 0, 0, 1, 1, 1970}, 0, "1/1/1970 0:0:0"},
           {Civil{12, 0, 0, 29, 2, 2004}, 1078056000, "29/2/2004 12:0:0"},
           {Civil{3, 14, 7, 19, 1, 2038}, INT32_MAX, "19/1/2038 3:14:7"},
           {Civil{20, 45, 52, 13, 12, 1901}, INT32_MIN, "13/12/1901 20:45:52"}}) {
    EXPECT_EQ(timestamp_of(civil), timestamp);
    EXPECT_EQ(format(cmdl1().UnMkTime(timestamp), "d/m/yyyy h:n:s"), moment);
  }
}

TEST(Clock, WhatIsNoMomentFails) {
  for (const auto& [c, error] :
       Table<Civil, ErrorNumber>{{Civil{24, 0, 0, 1, 1, 1970}, type_mismatch},
                                 {Civil{0, 60, 0, 1, 1, 1970}, type_mismatch},
                                 {Civil{0, 0, 60, 1, 1, 1970}, type_mismatch},
                                 {Civil{12, 0, 0, 29, 2, 2005}, type_mismatch},
                                 {Civil{0, 0, 0, 30, 2, INT16_MIN}, type_mismatch},
                                 {Civil{3, 14, 8, 19, 1, 2038}, overflow},
                                 {Civil{20, 45, 51, 13, 12, 1901}, overflow},
                                 {Civil{0, 0, 0, 29, 2, INT16_MIN}, overflow}}) {
    EXPECT_EQ(error_of([&] { return timestamp_of(c); }), error)
        << int{c.day} << "/" << int{c.month} << "/" << c.year;
  }
}

}  // namespace
}  // namespace ravelinox::testing
