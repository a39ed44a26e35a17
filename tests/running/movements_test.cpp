#include <gtest/gtest.h>

#include <algorithm>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using Lines = std::vector<std::string>;

constexpr std::string_view run_of_2345 = R"(
2345 R ' 3 '; Firenze - 8:00; Empoli 8:25 8:27; Pontedera 8:45 8:46; Pisa 9:00 -
)";

/// Both lists, the arrived trains before the bar.
std::string lists() {
  return frmTelefonoINdll().TreniArrivati.text() + "|" + frmTelefonoINdll().TreniPartiti.text();
}

TEST(Recording, ShiftsTheRestOfTheRunAndGoesOnAfterEveryStepThatFails) {
  // What was reported, the rows that differ from the timetable, and the lists.
  for (const auto& [event, train, moment, name, changed, expected] :
       Table<const char*, std::int32_t, const char*, const char*, const char*, const char*>{
           // The written arrival lies after the scheduled one, so its own row moves once more.
           {"Arrivo", 2345, "8:26", "Empoli",
            "Empoli 8:25:00 8:27:00 expected 8:27:00 8:29:00; "
            "Pontedera 8:45:00 8:46:00 expected 8:46:00 8:47:00; ",
            " 2345|"},
           {"Arrivo", 2345, "8:24:15", "Empoli",
            "Empoli 8:25:00 8:27:00 expected 8:24:15 8:26:15; "
            "Pontedera 8:45:00 8:46:00 expected 8:44:15 8:45:15; ",
            " 2345|"},
           {"Partenza", 2345, "8:28:30", "Empoli",
            "Empoli 8:25:00 8:27:00 expected 8:25:00 8:28:30; "
            "Pontedera 8:45:00 8:46:00 expected 8:46:30 8:47:30; ",
            "| 2345"},
           {"Arrivo", 2345, "8:00", "Firenze", "", "|"},  // the origin
           {"Partenza", 2345, "9:05", "Pisa", "Pisa 9:00:00 - expected 9:00:00 9:05:00; ",
            "| 2345"},
           {"Arrivo", 99, "8:00", "Empoli", "", " 99|"},
           {"arrivo", 2345, "8:00", "Empoli", "", "|"},  // another word
           {"Arrivo", 2345, "17:31:08", "Empoli",        // a deviation beyond 16 bits
            "Empoli 8:25:00 8:27:00 expected 17:31:08 17:33:08; ", " 2345|"},
           {"Arrivo", 2345, "8:30", "Em'poli", "", " 2345|"}}) {
    Station station(run_of_2345);
    const Lines before = station.run(2345);
    EXPECT_TRUE(station.engine.RegistraEvento(event, train, at(moment), name).is_empty());
    std::string different;
    for (const std::string& row : station.run(2345)) {
      if (std::ranges::count(before, row) == 0) different += row + "; ";
    }
    EXPECT_EQ(different, changed) << event << " " << moment << " " << name;
    EXPECT_EQ(lists(), expected) << event << " " << moment << " " << name;
    EXPECT_EQ(station.engine.DLLRS3->state(), ObjectState::closed) << event << " " << name;
  }
}

TEST(Recording, ATrainThatMadeUpItsDelayKeepsTheMomentOfItsArrival) {
  Station station(run_of_2345);
  station.engine.RitardaTreno(2345, 60, 0);
  station.engine.RegistraEvento("Arrivo", 2345, at("8:25"), "Empoli");
  EXPECT_EQ(station.run(2345)[1], "Empoli 8:25:00 8:27:00 expected 8:25:00 8:26:00");
  EXPECT_EQ(station.run(2345)[2], "Pontedera 8:45:00 8:46:00 expected 8:45:00 8:46:00");
}

TEST(Recording, ASlotLeftOpenIsNotReadButClosed) {
  Station station(run_of_2345);
  station.engine.DLLRS3->open("SELECT Orario_partenza, Numero FROM circolazione");
  station.engine.RegistraEvento("Arrivo", 2345, at("8:26"), "Empoli");
  // Without the comparison the deviation counts as 0; the real time is written all the same.
  EXPECT_EQ(station.run(2345)[1], "Empoli 8:25:00 8:27:00 expected 8:26:00 8:27:00");
  EXPECT_EQ(station.run(2345)[2], "Pontedera 8:45:00 8:46:00 expected 8:45:00 8:46:00");
  EXPECT_EQ(station.engine.DLLRS3->state(), ObjectState::closed);
}

TEST(Delaying, MovesRowsWithBothTimesDueAndGivesAFirstCause) {
  Station station(run_of_2345);
  station.engine.RitardaTreno(2345, -45, at("8:45"), "ES 01");
  EXPECT_EQ(station.run(2345)[1], "Empoli 8:25:00 8:27:00 expected 8:25:00 8:27:00");
  EXPECT_EQ(station.run(2345)[2], "Pontedera 8:45:00 8:46:00 expected 8:44:15 8:45:15");
  EXPECT_EQ(station.run(2345)[3], "Pisa 9:00:00 - expected 9:00:00 -");
  station.engine.RitardaTreno(2345, 0, 0, "MV 01");
  EXPECT_EQ(station.query("SELECT Causa_ritardo FROM generalita_treni"), "ES 01");
  // A cause that cannot be written is passed over; times that leave 32 bits are not.
  EXPECT_NO_THROW(station.engine.RitardaTreno(2345, 10, at("8:40"), "an 'odd one"));
  station.change("UPDATE circolazione SET Effettivo_arrivo = 2147483640 WHERE Stazione = 'Empoli'");
  const Lines before = station.run(2345);
  EXPECT_EQ(error_of([&] { station.engine.RitardaTreno(2345, 10, 0); }), ErrorNumber::overflow);
  EXPECT_EQ(station.run(2345), before);
}

TEST(MovementSearch, AsksTheListsAndThenTheTimesBeforeTheStart) {
  Station station(run_of_2345);
  cmdl1& engine = station.engine;
  engine.RegistraEvento("Arrivo", 2345, at("8:25"), "Pontedera");
  engine.StartTime = at("8:25");
  EXPECT_TRUE(cmdl1().CercaListaTreni(2345, "Arrivo"));  // all objects of a thread read one list
  EXPECT_FALSE(engine.CercaListaTreni(2345, "Partenza"));
  EXPECT_FALSE(engine.CercaListaTreni(234, "Arrivo"));
  engine.StartTime = at("8:25:01");
  EXPECT_TRUE(engine.CercaListaTreni(2345, "Partenza"));
  EXPECT_EQ(error_of([&] { return engine.CercaListaTreni(2345, "partenza"); }),
            ErrorNumber::subscript_out_of_range);
}

TEST(MovementList, HoldsWholeNumbersInTheOrderOfRecording) {
  MovementList list;
  for (const std::int32_t train : {2345, 10271, 2345, -7}) list.append(train);
  EXPECT_EQ(list.text(), " 2345 10271 2345 -7");
  EXPECT_TRUE(list.contains(-7));
  EXPECT_FALSE(list.contains(1027));
  list.append(8);
  EXPECT_TRUE(list.contains(8));
  // Items behind one that is no number are not reached.
  list = std::string(" 1  2.0 x 3");
  EXPECT_TRUE(list.contains(2));
  EXPECT_THROW((void)list.contains(3), Error);
  list = std::string(" 1");
  EXPECT_FALSE(list.contains(0));
  for (int item = 2; item < 32768; ++item) list.append(item);
  EXPECT_FALSE(list.contains(0));
  list.append(5);
  EXPECT_THROW((void)list.contains(5), Error);
}

}  // namespace
}  // namespace ravelinox::testing
