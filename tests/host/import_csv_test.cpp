// Files as publishers write them, and files that are none.
#include <gtest/gtest.h>

#include "host/import/csv.hpp"
#include "text_feed.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;
using Records = std::vector<std::vector<std::string>>;

TextFeed feed_of(const std::string& text) { return TextFeed({{"f", text}}); }

Records records(const std::string& text) {
  CsvReader reader(feed_of(text).open("f"), "f");
  Records result;
  for (std::vector<std::string> fields; reader.next(fields);) result.push_back(fields);
  return result;
}

TEST(Csv, ReadsEveryWayOfWritingARecord) {
  for (const auto& [text, expected] :
       Table<const char*, Records>{{"", {}},
                                   {"\xEF\xBB\xBF\"a\"\n", {{"a"}}},
                                   {"\n\na\n\n  \nb\n", {{"a"}, {"b"}}},
                                   {"\"x, y\",\"say \"\"so\"\"\"\n", {{"x, y", "say \"so\""}}},
                                   {"\"two\nlines\",z", {{"two\nlines", "z"}}},
                                   {" a , \"b\" ,\tc\n", {{"a", "b", "c"}}},
                                   {",,\n", {{"", "", ""}}},
                                   {"Sant\"Ilario,1\n", {{"Sant\"Ilario", "1"}}}}) {
    EXPECT_EQ(records(text), expected) << text;
  }
}

TEST(Csv, RefusesDamageWithItsPlace) {
  for (const auto& [text, part] :
       Table<std::string, const char*>{{"a\n1\n\"open", "f, line 3"},
                                       {"a\n\"" + std::string(70'000, 'x') + "\"\n", "64 KiB"},
                                       {"a\n" + std::string(70'000, 'x'), "64 KiB"},
                                       {std::string(5'000, ','), "no feed"},
                                       {"a,b\n1,2,3\n", "line 2: 3 fields"},
                                       {"", "no column a"}}) {
    const TextFeed feed = feed_of(text);
    const auto read = [&] {
      FeedTable table(feed, "f", {"a"});
      while (table.next()) continue;
      return true;
    };
    EXPECT_NE(refusal_of(read).find(part), std::string::npos) << text.substr(0, 40);
  }
}

}  // namespace
}  // namespace ravelinox::host
