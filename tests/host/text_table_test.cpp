#include "host/text_table.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

TEST(TextTable, FitsByWhatIsSeen) {
  for (const auto& [text, width, fitted] : Table<const char*, std::size_t, const char*>{
           {"Empoli", 6, "Empoli"},
           {"Empoli", 5, "Empo…"},
           {"Città", 4, "Cit…"},
           {"Citta\u0300 X", 6, "Citta\u0300…"},  // a combining accent takes no column
           {"", 2, "  "},
           {"\xE0", 2, "\xE0 "},  // not UTF-8: counted, never run past
       }) {
    EXPECT_EQ(fit(text, width), fitted) << text;
  }
}

TEST(TextTable, ColumnsAlignUnderTheirTitles) {
  const std::vector<std::string> lines =
      table_lines({{"To", 6}, {"Time"}, {""}}, {{"Forlì", "6.05", "late"}, {"Bologna C.", "", ""}});
  EXPECT_EQ(lines, (std::vector<std::string>{"To      Time", "Forlì   6.05  late", "Bolog…"}));
}

}  // namespace
}  // namespace ravelinox::host
