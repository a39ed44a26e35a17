#include <gtest/gtest.h>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

/// Prepares 7 January 1970, a Wednesday, from 6:00 without any deviation; all trains on demand run
/// when `on_demand`, else all of today's do.
void set_up(Station& station, bool on_demand = false) {
  station.engine.Global_ProbabilitaSoppressione = 100;
  // The draws: for an extraordinary train the first decides that it runs; 0.505 also picks the
  // second of two stabling tracks.
  station.script({on_demand ? 0.505F : 0.0F, 0.0F});
  station.engine.Inzializza_Orario(at("6+6:00"), at("6+0:00"));
}

TEST(Placement, ATrainStandsBetweenItsTimesOrStartsWithinAnHour) {
  for (const auto& [rows, state] : Table<const char*, const char*>{
           {"A - 5:30; Empoli 5:59:59 6:10 track=3; B 7:00 -", "PdS|Empoli, 3 0|50, 15 30, 0, --"},
           {"A - 5:30; Empoli 6:00 6:10 track=3; B 7:00 -", "L, S, 0, 140, --"},
           {"A - 5:30; Empoli 5:50 6:00 dwell=0 track=3; B 7:00 -", "L, S, 0, 140, --"},
           {"A - 5:30; Pontedera 5:50 6:10 track=3; B 7:00 -", "L, S, 0, 140, --"},
           {"A - 5:30; empoli 5:50 6:10 track=3; B 7:00 -", "L, S, 0, 140, --"},
           {"Empoli - 6:00 track=2; B 8:00 -", "L, S, 0, 140, --"},
           {"Empoli - 6:00:01 track=2; B 8:00 -", "PdS|Empoli, 2 0|50, 20, 0, --"},
           {"Empoli - 6:59:59 track=2; B 8:00 -", "PdS|Empoli, 2 0|50, 20, 0, --"},
           {"Empoli - 7:00 track=2; B 8:00 -", "L, S, 0, 140, --"}}) {
    Station station("1 R ' 3 ' length=200; " + std::string(rows));
    set_up(station);
    EXPECT_EQ(station.state(1), state) << rows;
  }
}

TEST(Placement, ATrackThatExpectsAnotherTrainFirstIsTaken) {
  for (const auto& [other, placed] : Table<const char*, bool>{{"Empoli 6:10 6:12 track=2", false},
                                                              {"Empoli 6:10 6:12 track=1", true},
                                                              {"Empoli 6:30 6:40 track=2", true},
                                                              {"Empoli 5:59 6:01 track=2", true},
                                                              {"Siena 6:10 6:12 track=2", true}}) {
    Station station("1 R ' 3 '; A - 5:40; " + std::string(other) +
                    "; B 8:00 -\n2 R ' 3 '; Empoli - 6:30 track=2; B 8:00 -");
    set_up(station);
    EXPECT_EQ(station.state(2).starts_with("PdS|Empoli"), placed) << other;
  }
}

TEST(Placement, ExtraordinaryTrainsStandOnTheStablingTrack) {
  for (const auto& [train, state] : Table<const char*, const char*>{
           {"8 R '' length=400; A - 5:30; Empoli 5:50 6:10 track=3; B 7:00 -",
            "PdS|Empoli, 11 0|150, 20, 0, --"},
           {"8 R '' length=Null; Empoli - 6:10 track=3; B 7:00 -",
            "PdS|Empoli, 3 0|, 20, 0, --"}}) {
    Station station(train);
    set_up(station, true);
    EXPECT_EQ(station.state(8), state);
  }
}

TEST(Placement, TheStablingTrackIsOneDrawAmongAll) {
  for (const auto& [draw, difference] : Table<float, const char*>{{0.49F, "50"}, {0.51F, "100"}}) {
    Station station("1 R ' 3 ' length=200; Empoli - 6:30; B 8:00 -");
    station.engine.Global_ProbabilitaSoppressione = 100;
    const auto& random = station.script({0, 0, 0, 0, 0, 0, draw, 0});
    station.engine.Inzializza_Orario(at("6+6:00"), at("6+0:00"));
    EXPECT_EQ(station.state(1), "PdS|Empoli, 1 0|" + std::string(difference) + ", 20, 0, --");
    EXPECT_EQ(random.draws, 2U + 4 + 1 + 3);
  }
}

TEST(Placement, AStationWithoutAStablingTrackFails) {
  Station station("1 R ' 3 '; Empoli - 6:30; B 8:00 -");
  station.change_station("UPDATE enti SET Tipo_CDB = 'linea'");
  EXPECT_EQ(error_of([&] { set_up(station); }), ErrorNumber::no_current_record);
  EXPECT_EQ(station.engine.DLLRS->state(), ObjectState::open);
}

}  // namespace
}  // namespace ravelinox::testing
