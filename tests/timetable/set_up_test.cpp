// The simulated day of these tests is Wednesday, 7 January 1970, day 6 of the stored weeks, from
// 6:00; the next day is a Thursday.
#include <gtest/gtest.h>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;
using Lines = std::vector<std::string>;

/// Draws that fall between all chances: no suppression, no order, no deviation.
constexpr float nothing = 0.0F;

void set_up(Station& station, std::int16_t suppression = 100, std::int16_t spread = 0) {
  const std::int32_t start = at("6+6:00");
  station.engine.Global_ProbabilitaSoppressione = suppression;
  station.engine.Global_Puntualita = spread;
  station.engine.StartTime = start;
  EXPECT_TRUE(station.engine.Inzializza_Orario(start, at("6+0:00")).is_empty());
}

TEST(SetUp, ATrainOfTodayFollowsTheRulesRowByRow) {
  Station station(R"(
2345 R ' 3 ' cause=ES_01
  Firenze - 8:00; Empoli 8:25 8:27 recovery=60 track=3; Pisa 9:00 - recovery=60
)");
  auto& random = station.script({nothing, nothing,      // suppression, priority
                                 0.5F, 0.2F, 0, 0.5F,   // Firenze: +50 -20
                                 0.25F, 0, 0.5F,        // Empoli: 30 late, +25, wins 30
                                 0, 0.75F, 0.5F, 0.5F,  // early, held by dwell and time
                                 0, 0, 0});             // Pisa: as early as it left
  set_up(station, 100, 100);
  EXPECT_EQ(station.run(2345), (Lines{"Firenze - 6+8:00:00 expected - 6+8:00:30",
                                      "Empoli 6+8:25:00 6+8:27:00 expected 6+8:25:25 6+8:26:30",
                                      "Pisa 6+9:00:00 - expected 6+8:59:30 -"}));
  EXPECT_EQ(station.state(2345), "L, S, 0, 140, --");
  EXPECT_EQ(random.draws, 16U);
  EXPECT_EQ(random.reseedings, 5U);
  EXPECT_EQ(messages(), Lines{});
}

TEST(SetUp, ALateTrainOfTodayGetsItsCauseAtTheOwnStationAlone) {
  for (const auto& [spread, cause] :
       Table<std::int16_t, const char*>{{240, "--"}, {241, "CS 01"}}) {
    Station station("1 R ' 3 '; A - 8:00 dwell=0; Empoli 8:10 8:11 dwell=0; B 9:00 -");
    // One second below the spread late at A; on time from there: 240 is no reason yet.
    auto& random = station.script({nothing, nothing, 0.9999F, 0, 0, 0,  //
                                   1.0F / 240, 0, 0, nothing});
    set_up(station, 100, spread);
    EXPECT_EQ(station.query("SELECT Causa_ritardo FROM generalita_treni"), cause);
    EXPECT_EQ(random.reseedings, spread == 241 ? 7U : 5U);  // each drawn cause reseeds
  }
}

TEST(SetUp, TrainsOfTodayRunFromAnHourBeforeTheStart) {
  Station station(R"(
1 R ' 3 '; A - 5:00; B 7:00 -
2 R ' 3 '; A - 5:00:01; B 7:00 -
3 R ' 3 '; A - 3+23:30; B 3+23:50 4+0:10; C 4+1:00 -
)");
  set_up(station);
  EXPECT_EQ(station.run(1)[1], "B 7:00:00 - expected 7:00:00 -");
  EXPECT_EQ(station.run(2),
            (Lines{"A - 6+5:00:01 expected - 6+5:00:01", "B 6+7:00:00 - expected 6+7:00:00 -"}));
  // A run across midnight keeps increasing.
  EXPECT_EQ(station.run(3), (Lines{"A - 6+23:30:00 expected - 6+23:30:00",
                                   "B 6+23:50:00 7+0:10:00 expected 6+23:50:00 7+0:10:00",
                                   "C 7+1:00:00 - expected 7+1:00:00 -"}));
}

TEST(SetUp, TomorrowsTrainsThatEndInTimeMoveToTomorrow) {
  int beeps = 0;
  Station station(R"(
1 R ' 4 '; A - 4:00; B 4:58:59 -
2 R ' 4 '; A - 4:00; B 4:59 -
3 R ' 4 '; A - 23:30; Empoli 23:40 23:50; B 1+0:30 -
)");
  platform().beep = [&] { ++beeps; };
  auto& random = station.script({nothing});
  set_up(station);
  EXPECT_EQ(station.run(1),
            (Lines{"A - 7+4:00:00 expected - 7+4:00:00", "B 7+4:58:59 - expected 7+4:58:59 -"}));
  EXPECT_EQ(station.state(1), "L, S, 0, 140, --");
  // It ends at the edge: not a row is touched, nor its state.
  EXPECT_EQ(station.run(2)[0], "A - 4:00:00 expected - 4:00:00");
  EXPECT_EQ(station.state(2), "L, S, 0, 7, --");
  // Its end looks early, but the rows lie too late: each present time beeps and stays.
  EXPECT_EQ(station.run(3)[1], "Empoli 23:40:00 23:50:00 expected 23:40:00 23:50:00");
  EXPECT_EQ(beeps, 4);
  EXPECT_EQ(random.draws, 1U + 3 + 2 + 1 + 1 + 1);  // 1: suppression, rows, priority; 2, 3
}

/// The middle draw decides; with the default of 0, and with 1, every draw does.
TEST(SetUp, SuppressedTrainsKeepTheirTimesAndThoseOnDemandRun) {
  for (const auto& [suppression, draw] :
       Table<std::int16_t, float>{{0, 0.75F}, {1, 0.75F}, {100, 0.505F}}) {
    Station station(
        "7 R ' 3 4 '; A - 8:00; B 9:00 -\n8 R ''; A - 8:00; Empoli 8:30 8:31; B 9:00 -");
    station.script({draw});
    set_up(station, suppression);
    EXPECT_EQ(messages(), (Lines{"Dirigente centrale: Oggi il treno 7 è soppresso.",
                                 "Dirigente centrale: Domani il treno 7 è soppresso.",
                                 "Dirigente centrale: Oggi effettualsi treno straodrinario 8."}));
    EXPECT_EQ(station.run(7)[0], "A - 8:00:00 expected - 8:00:00");
    EXPECT_EQ(station.state(7), "L, S, 0, 7, --");
    EXPECT_EQ(station.run(8)[1], "Empoli 6+8:30:00 6+8:31:00 expected 6+8:30:00 6+8:31:00");
  }
}

TEST(SetUp, ExtraordinaryTrainsLeaveOldMovementsAloneWithoutABeep) {
  int beeps = 0;
  Station station("8 R ''; A - 4:30; B 4:50 5:10; C 9:00 -");
  platform().beep = [&] { ++beeps; };
  station.script({0.505F, nothing, 0.5F, 0, 0, 0, 0.5F});
  set_up(station, 100, 100);
  EXPECT_EQ(station.run(8), (Lines{"A - 4:30:00 expected - 4:30:00",
                                   "B 4:50:00 6+5:10:00 expected 4:50:00 6+5:10:50",
                                   "C 6+9:00:00 - expected 6+8:59:35 -"}));
  EXPECT_EQ(beeps, 0);
}

TEST(SetUp, APriorityOrderIsToldAndWritten) {
  Station station("2345 R ' 3 '; A - 8:00; B 9:00 -");
  station.script({nothing, 0.50005F, nothing});
  set_up(station);
  EXPECT_EQ(messages(), (Lines{"Dirigente Coordinatore Movimento: Applicare marcia prioritaria al "
                               "treno 2345. "}));
  EXPECT_EQ(station.query("SELECT Marcia_Prioritaria FROM generalita_treni"), "True");
}

TEST(SetUp, TheWeekMovesBackForTrainsAfterTheStart) {
  Station station(R"(
1 R ' 5 '; A - 7+8:00; B 7+9:00 -
2 R ' 5 '; A - 6+5:00; B 6+5:30 -
3 R ' 5 '; A - 7+0:00; B 7+0:00:01 -
)");
  set_up(station);
  EXPECT_EQ(station.run(1)[0], "A - 8:00:00 expected - 8:00:00");
  EXPECT_EQ(station.run(2)[0], "A - 6+5:00:00 expected - 6+5:00:00");
  // The row at exactly one week stays, the later one of the same train moves.
  EXPECT_EQ(station.run(3),
            (Lines{"A - 7+0:00:00 expected - 7+0:00:00", "B 0:00:01 - expected 0:00:01 -"}));
}

TEST(SetUp, FailuresStopItAndKeepTheRowsThatWereMoved) {
  for (const auto& [timetable, error, moved] : Table<const char*, ErrorNumber, const char*>{
           {"1 R ' 3 '", no_current_record, ""},
           {"1 R ' 3 '; A - -", invalid_use_of_null, ""},
           {"1 R ' 3 '; A - 8:00 recovery=Null", invalid_use_of_null, ""},
           {"1 R ' 3 '; A - 8:00; Empoli 8:10 8:20 dwell=Null; B 9:00 -", invalid_use_of_null, "A"},
           {"1 R ' 3 '; A - 8:00; B -24855+0:00 -", overflow, "A"}}) {
    Station station(timetable);
    EXPECT_EQ(error_of([&] { set_up(station); }), error) << timetable;
    EXPECT_EQ(station.engine.DLLRS3->state(), ObjectState::open) << timetable;
    EXPECT_EQ(station.query("SELECT Stazione FROM circolazione WHERE Orario_arrivo > 86400 OR "
                            "Orario_partenza > 86400"),
              moved)
        << timetable;
  }
}

}  // namespace
}  // namespace ravelinox::testing
