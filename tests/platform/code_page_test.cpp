#include <gtest/gtest.h>

#include "platform/text_case.hpp"
#include "platform/text_file.hpp"
#include "support/cases.hpp"

namespace ravelinox::testing {
namespace {

TEST(CodePage, BytesOfTexts) {
  for (const auto& [utf8, bytes] :
       Table<std::string, std::string>{{"perché", "perch\xE9"},
                                       {"e\u0301E\u0300N\u0303", "\xE9\xC8\xD1"},
                                       {"\u0301a", "?a"},
                                       {"€Šž’—Ÿ", "\x80\x8A\x9E\x92\x97\x9F"},
                                       {"\u0081\u008D\u008F\u0090\u009D", "\x81\x8D\x8F\x90\x9D"},
                                       {"中😀", "??"},
                                       {"a\xFFz\xC3", "a?z?"},
                                       {"\xE2\x82", "??"},
                                       {std::string("a\0b", 3), std::string("a\0b", 3)}}) {
    EXPECT_EQ(to_code_page(utf8), bytes) << utf8;
  }
}

TEST(CodePage, LettersAreEqualInBothCases) {
  for (const auto& [a, b] : Table<const char*, const char*>{
           {"Empoli", "EMPOLI"}, {"Forlì", "FORLÌ"}, {"Þœšžÿ", "þŒŠŽŸ"}}) {
    EXPECT_TRUE(equal_ignoring_case(a, b)) << a;
  }
  for (const auto& [a, b] : Table<const char*, const char*>{
           {"×", "÷"}, {"Forli", "Forlì"}, {"a", "aa"}, {"@", "`"}, {"ß", "ÿ"}}) {
    EXPECT_FALSE(equal_ignoring_case(a, b)) << a;
  }
}

}  // namespace
}  // namespace ravelinox::testing
