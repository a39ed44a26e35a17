// Names, numbers and categories: what a feed writes, and what the databases get.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/import/category.hpp"
#include "host/import/names.hpp"
#include "host/import/numbers.hpp"
#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

TEST(Names, AreCleanOfWhatTheInterfaceUsesAsSeparators) {
  for (const auto& [raw, clean] :
       Table<const char*, const char*>{{"Rignano Sull'Arno", "Rignano Sull’Arno"},
                                       {"Forli` e Ca´ Nova", "Forli’ e Ca’ Nova"},
                                       {"Aachen, Hbf,Aachen", "Aachen Hbf Aachen"},
                                       {"A|B;  C\t@D", "A B C D"},
                                       {"BER - Terminal 1-2", "BER-Terminal 1-2"},
                                       {"A -  - B", "A-- B"},
                                       {"Łódź Dąbrowa Škocjan", "Lódz Dabrowa Škocjan"},
                                       {"Gr\u00FCn u. Gru\u0308n, n\u0304", "Grün u. Grün n"},
                                       {"Киев Щука", "Kiev Shchuka"},
                                       {"M\xFCnchen", "München"},
                                       {"a\u00A0b\u200Bc", "a bc"}}) {
    EXPECT_EQ(clean_name(raw), clean) << raw;
  }
  EXPECT_EQ(clean_name(std::string_view("a\0b", 3)), "a b");
}

TEST(Names, AreComparedByTheirLetters) {
  EXPECT_EQ(folded("Frankfurt(Main)Hbf"), folded("frankfurt (main) HBF"));
  EXPECT_EQ(folded("Straße"), "strasse");
  EXPECT_EQ(lower_case("ÀŠŸ×Z"), "àšÿ×z");
}

TEST(Numbers, ComeFromTheFirstWordOfDigits) {
  for (const auto& [name, number] : Table<const char*, std::int32_t>{
           {"04042", 4042}, {"999999", 999999}, {" 7 ", 7}, {"ICE 27/28", 27}}) {
    EXPECT_EQ(number_in(name), number) << name;
  }
  for (const char* name : {"RE1", "12A", "", "0", "000", "1000000", "99999999999999", "*"}) {
    EXPECT_EQ(number_in(name), std::nullopt) << name;
  }
}

TEST(Numbers, AreDifferentAndTheSameWhateverTheOrderOfTheRows) {
  std::vector<TripName> trips = {{"a", "04042"}, {"b", "4042"},  {"c", ""},      {"d", "RE1"},
                                 {"e", "12345"}, {"f", "04042"}, {"g", "100001"}};
  const std::vector<std::int32_t> expected{4042, 1004042, 1000001, 1000002, 12345, 2004042, 100001};
  for (int order = 0; order < 2; ++order, std::ranges::reverse(trips)) {
    TrainNumbers numbers(trips);
    std::vector<std::int32_t> given;
    for (const char* trip : {"a", "b", "c", "d", "e", "f", "g"}) given.push_back(numbers.of(trip));
    EXPECT_EQ(given, expected);
    EXPECT_EQ(numbers.made(), 1000003);
  }
}

TEST(Categories, FollowTheFirstNameThatSaysSomething) {
  const Table<RouteNames, const char*, const char*> cases{
      {{"27", "IC 12", "Regionalbahn", 2}, "IC", ""},
      {{"", "12", "Intercity-Express", 2}, "ES*", ""},
      {{"", "", "InterCity Notte Roma", 2}, "IC", "ICN"},
      {{"", "S. Giovanni", "Firenze - S. Giovanni", 2}, "R", ""},
      {{"", "", "", 109}, "S", ""},
      {{"", "", "", 4711}, "R", ""}};
  for (const auto& [names, code, note] : cases) {
    const auto& category = category_of(names);
    EXPECT_EQ(category.code, code) << names.trip_short_name << names.route_short_name;
    EXPECT_EQ(category.note, note) << names.route_long_name;
  }
  for (const int type : {0, 3, 4, 11, 200, 700, 900}) EXPECT_FALSE(is_railway(type)) << type;
}

TEST(Categories, UndertakingsLoseTheirLegalForm) {
  EXPECT_EQ(undertaking_of("DB Fernverkehr AG"), "DB Fernverkehr");
  EXPECT_EQ(undertaking_of("Chemins d'Azur SA"), "Chemins d’Azur");
}

}  // namespace
}  // namespace ravelinox::host
