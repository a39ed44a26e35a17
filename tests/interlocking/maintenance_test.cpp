#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;

/// Wears the entity with the ID.
std::optional<ErrorNumber> wear(Station& station, std::int16_t id) {
  return error_of([&] { station.engine.DecrementaManutenzione(Variant::missing(), 0, id); });
}

void add_entity(Station& station, int id, const Variant& state) {
  append(station.station_file, "enti", id, "Deviatoio", 7, state, "", 0);
}

TEST(Maintenance, WearGrowsWithTheDrawAndTheWearSoFar) {
  for (const auto& [state, chance, draw, left] : Table<float, std::int16_t, float, float>{
           {10, 100, 0.5F, 9.995F},
           {0.5F, 100, 0.5F, 0.4F},
           {0.00005F, 1, 0.5F, 0},
           {10, 1, 0.5F, 9.9999F},    // 0.00005, a half
           {100, 5, 0.999F, 100}}) {  // 0.00004995 is below the fourth place
    Station station("");
    add_entity(station, 100, state);
    station.script({draw});
    station.engine.Global_ProbabilitaGuasti = chance;
    EXPECT_EQ(wear(station, 100), std::nullopt);
    EXPECT_EQ(station.engine.RicavaStatoManutenzione("", 0, 100), left)
        << state << " worn by " << chance << " at " << draw;
  }
}

TEST(Maintenance, TheKindIsAPrefixAndEveryMatchWears) {
  Station station("");
  add_entity(station, 100, 5.0F);
  add_entity(station, 101, 8.0F);
  auto& random = station.script({0.5F});
  station.engine.Global_ProbabilitaGuasti = 100;
  station.engine.DecrementaManutenzione("dev", 7);
  EXPECT_EQ(random.reseedings, 1U);
  EXPECT_EQ(random.draws, 1U);
  EXPECT_EQ(station.engine.RicavaStatoManutenzione("Deviatoio", 7), 4.99F);
  EXPECT_EQ(station.engine.RicavaStatoManutenzione(Variant::missing(), 0, 101), 7.99F);
}

TEST(Maintenance, WhatCannotWearFails) {
  Station station("");
  add_entity(station, 100, 0.0F);
  add_entity(station, 101, Variant::null());
  EXPECT_EQ(wear(station, 100), division_by_zero);
  EXPECT_EQ(wear(station, 0), type_mismatch);
  EXPECT_EQ(wear(station, 101), invalid_use_of_null);
  station.engine.DLLRS->close();
  EXPECT_EQ(wear(station, 999), no_current_record);
  EXPECT_EQ(station.engine.DLLRS->state(), ObjectState::open);
}

/// Whatever the state and the draw: never below 0, and exactly 0 when the wear takes all.
TEST(Maintenance, NeverPassesZero) {
  std::mt19937 generator(7);
  std::uniform_real_distribution<float> magnitude(-9, 2);
  std::uniform_real_distribution<float> draw(0, 1);
  Station station("");
  add_entity(station, 100, 1.0F);
  int taken_whole = 0;
  for (int round = 0; round < 100'000; ++round) {
    float state = std::pow(10.0F, magnitude(generator));
    if (state > 0.001F && round % 2 == 0) state = std::round(state * 1000) / 1000;
    station.engine.DLLRS->open("UPDATE enti SET Stato_manutenzione = " + to_text(state));
    const float drawn = station.script({draw(generator)}).draw();
    station.engine.Global_ProbabilitaGuasti = static_cast<std::int16_t>(generator() % 32'768);
    ASSERT_EQ(wear(station, 100), std::nullopt);
    const float left = station.engine.RicavaStatoManutenzione("", 0, 100);
    const double wanted = station.engine.Global_ProbabilitaGuasti * drawn / 1000.0 / state;
    const bool takes_all = wanted > state + 0.0001;  // beyond what rounding can spare
    ASSERT_TRUE(takes_all ? left == 0 : left >= 0 && left <= state)
        << state << " worn by " << wanted << " leaves " << left;
    if (left == 0) ++taken_whole;
  }
  EXPECT_GT(taken_whole, 10'000);
}

}  // namespace
}  // namespace ravelinox::testing
