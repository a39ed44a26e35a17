#include <gtest/gtest.h>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;

TEST(NextArrival, IsTheFirstToComeFromTheNeighbour) {
  Station station(R"(
1 R ' 3 '; Signa - 8:00; Empoli 8:10 8:11
2 R ' 3 '; Signa - 7:50; Empoli 8:07 8:08
3 R ' 3 '; Siena - 7:50; Empoli 8:06 8:07; Signa 8:20 -
4 R ' 3 '; Empoli - 8:06; Signa 8:20 -
5 R ' 3 '; Signa - 7:40; Empoli 8:05 8:06
)");
  for (const auto& [neighbour, moment, previous, answer] :
       Table<const char*, std::int32_t, std::int32_t, const char*>{
           {"Signa", at("8:05"), 0, "120|2"},
           {"Signa", at("8:05"), 2, "300|1"},
           {"Signa", at("8:04:59"), 0, "1|5"},
           {"Signa", at("8:10"), 0, "-29400|0"},
           {"Pisa", -5, 0, "5|0"}}) {
    EXPECT_EQ(station.engine.ProssimoArrivo("Empoli", neighbour, moment, previous),
              Variant(answer));
    EXPECT_EQ(station.engine.DLLRS4->state(), ObjectState::closed);
  }
  // A neighbour passed twice before is passed over.
  station.change("UPDATE circolazione SET Stazione = 'Signa' WHERE Stazione = 'Siena'");
  station.change("UPDATE circolazione SET Numero = 2 WHERE Numero = 3 AND Stazione = 'Signa'");
  EXPECT_EQ(station.engine.ProssimoArrivo("Empoli", "Signa", at("8:05")), Variant("300|1"));
}

/// Two trains that gain p and q seconds of delay on the section behind Signa.
TEST(Precedence, ComparesTheDelayGainedBehindTheStation) {
  for (const auto& [p, q, second_first] : Table<std::int16_t, std::int16_t, bool>{
           {1, -30, true}, {120, 120, true}, {120, 121, false}, {0, -30, false}}) {
    Station station(R"(
1 R ' 3 '; Empoli - 8:00; Signa 8:10 8:11; Pisa 8:30 8:31
2 R ' 3 '; Empoli - 8:00; Signa 8:10 8:11; Pisa 8:30 8:31
)");
    cmdl1& engine = station.engine;
    for (const auto& [train, gained] : {std::pair(1, p), std::pair(2, q)}) {
      engine.RitardaTreno(train, 60, 0);
      engine.RitardaTreno(train, gained, at("8:20"));
    }
    EXPECT_EQ(engine.AnalisiPrecedenza(1, 2, "Empoli"), second_first) << p << " and " << q;
    // From another station the first section of each run counts, where both gain a minute.
    EXPECT_TRUE(engine.AnalisiPrecedenza(1, 2, "empoli"));
  }
}

TEST(Precedence, NeedsASection) {
  Station station("1 R ' 3 '; Empoli - 8:00\n2 R ' 3 '; Siena - 8:00; Empoli 8:10 -");
  for (const auto& [train, name, error] :
       Table<std::int32_t, const char*, ErrorNumber>{{1, "Empoli", no_current_record},
                                                     {1, "Siena", no_current_record},
                                                     {2, "Siena", invalid_use_of_null}}) {
    EXPECT_EQ(error_of([&] { station.engine.AnalisiPrecedenza(train, 2, name); }), error) << train;
    station.engine.DLLRS3->close();
  }
}

}  // namespace
}  // namespace ravelinox::testing
