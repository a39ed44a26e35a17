#include <gtest/gtest.h>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;

constexpr std::string_view run_of_2345 = R"(
2345 R ' 3 '; Firenze - 8:00; Empoli 8:25 8:27; Pontedera 8:45 8:46; Pisa 9:00 -
)";

TEST(Delay, IsRoundedDownAndSigned) {
  for (const auto& [seconds, step, delay] : Table<std::int16_t, std::uint8_t, const char*>{
           {59, 0, "  0"}, {60, 0, "+ 1"}, {-60, 0, "- 1"}, {-61, 0, "- 2"}, {-60, 5, "- 5"}}) {
    Station station(run_of_2345, "Siena");
    station.engine.RitardaTreno(2345, seconds, 0);
    EXPECT_EQ(station.engine.RicavaRitardo(2345, at("8:59"), step), Variant(delay))
        << seconds << " in steps of " << int{step};
  }
}

TEST(Delay, LooksAtScheduledTimesAndTheSentenceAtExpectedOnes) {
  Station station(run_of_2345, "Siena");
  station.change(
      "UPDATE circolazione SET Effettivo_arrivo = Effettivo_arrivo - 300, Effettiva_partenza = "
      "Effettiva_partenza + 480 WHERE Stazione = 'Empoli'");
  cmdl1& engine = station.engine;
  const std::string train = "Il treno R 2345, partito da Firenze il giorno 1/01/1970, viaggia con ";
  EXPECT_EQ(engine.RicavaRitardo(2345, at("8:21")), Variant("  0"));
  EXPECT_EQ(engine.RicavaInfoCircolazione(2345, at("8:21")),
            Variant(train + "-5 minuti di ritardo. Il treno è arrivato nella stazione di Empoli "
                            "alle ore 8:20."));
  EXPECT_EQ(engine.RicavaRitardo(2345, at("8:27")), Variant("+ 8"));
  EXPECT_EQ(engine.RicavaInfoCircolazione(2345, at("8:40")),
            Variant(train + "8 minuti di ritardo. Il treno è partito/transitato dalla stazione di "
                            "Empoli alle ore 8:35."));
  station.change("UPDATE circolazione SET Orario_partenza = 30000 WHERE Stazione = 'Pisa'");
  EXPECT_EQ(error_of([&] { return engine.RicavaRitardo(2345, at("9:30")); }),
            invalid_use_of_null);  // due without an expected time
  EXPECT_EQ(engine.DLLRS3->state(), ObjectState::open);
}

TEST(Delay, WaitsForTheRecordingAtTheOwnStation) {
  Station station(run_of_2345);
  cmdl1& engine = station.engine;
  const auto sentence_names = [&](const char* what) {
    const std::string sentence = to_text(engine.RicavaInfoCircolazione(2345, at("8:40")));
    return sentence.find(what) != std::string::npos;
  };
  EXPECT_TRUE(sentence_names("dalla stazione di Firenze alle ore 8:00"));
  engine.RegistraEvento("Arrivo", 2345, at("8:28"), "Empoli");
  EXPECT_TRUE(sentence_names("arrivato nella stazione di Empoli"));
  EXPECT_EQ(engine.RicavaRitardo(2345, at("8:40")), Variant("+ 6"));
  engine.RegistraEvento("Partenza", 2345, at("8:33"), "Empoli");
  EXPECT_TRUE(sentence_names("dalla stazione di Empoli alle ore 8:33"));
}

TEST(Delay, NothingIsKnownOfTrainsThatHaveNotStarted) {
  Station station("1 IC ' 3 '; Empoli - 8:00; Pisa 8:30 -\n2 R ''; Firenze - 8:00; Empoli 8:30 -");
  cmdl1& engine = station.engine;
  for (const auto& [train, moment] :
       Table<std::int32_t, const char*>{{99, "9:00"}, {2, "7:59:59"}, {1, "8:10"}}) {
    EXPECT_EQ(engine.RicavaRitardo(train, at(moment)), Variant("--")) << train;
    EXPECT_EQ(engine.RicavaInfoCircolazione(train, at(moment)),
              Variant("Nessuna informazione è disponibile riguardo al treno indicato."))
        << train;
  }
  engine.RegistraEvento("Partenza", 1, at("8:00"), "Empoli");
  EXPECT_EQ(engine.RicavaRitardo(1, at("8:10")), Variant("  0"));
  station.change("UPDATE generalita_treni SET Numero = 77 WHERE Numero = 2");
  EXPECT_EQ(engine.RicavaRitardo(2, at("8:10")), Variant("--"));
}

TEST(Run, EndsAndStops) {
  Station station(R"(
1 R ' 3 '
  Firenze - 8:00; Signa 8:10 8:10; EMPOLI 8:25 8:27; Pontedera 8:45 8:46
  Cascina 8:50 8:50; Navacchio 8:52 8:53; Pisa 9:00 -
2 R ' 3 '; Siena - 8:00; Empoli 9:00 -
3 R ' 3 '; Empoli - 8:00
4 R ' 3 '; Siena - 8:00; Volterra 9:00 -
)");
  cmdl1& engine = station.engine;
  EXPECT_EQ(engine.CorsaTreno(1), Variant("Firenze - Pisa"));
  EXPECT_TRUE(engine.CorsaTreno(99).is_empty());
  EXPECT_EQ(error_of([&] { return engine.CorsaTreno(3); }), no_current_record);
  engine.DLLRS3->close();  // a failure leaves the slot open
  EXPECT_EQ(engine.FermateSuccessive(1, "Pontedera"), Variant("Pontedera,Navacchio,."));
  EXPECT_EQ(engine.FermateSuccessive(2, "Empoli"), Variant("."));
  EXPECT_EQ(error_of([&] { return engine.FermateSuccessive(4, "Empoli"); }), no_current_record);
  engine.DLLRS3->close();
  // No name is not the empty name.
  append(station.line_file, "circolazione", 5, Variant::null(), 0, 9, 0, 9, 0, 0, "1");
  engine.Nome_PdS = "";
  EXPECT_EQ(error_of([&] { return engine.FermateSuccessive(5, ""); }), no_current_record);
}

TEST(Run, PositionIsWhereTheExpectedArrivalsPutIt) {
  Station station(run_of_2345);
  cmdl1& engine = station.engine;
  for (const auto& [moment, position] : Table<const char*, const char*>{
           {"8:24:59", "Firenze|Empoli"}, {"8:25", "Empoli|Pontedera"}, {"9:00", "Pisa|Pisa"}}) {
    EXPECT_EQ(engine.RicavaPosizioneTreno(2345, at(moment)), Variant(position)) << moment;
  }
  EXPECT_EQ(error_of([&] { return engine.RicavaPosizioneTreno(99, 0); }), no_current_record);
  engine.DLLRS3->close();
  station.change("UPDATE circolazione SET Numero = 5 WHERE Stazione = 'Firenze'");
  EXPECT_EQ(engine.RicavaPosizioneTreno(5, at("9:00")), Variant("Firenze|"));
  EXPECT_EQ(error_of([&] { return engine.RicavaPosizioneTreno(2345, at("8:00")); }),
            no_current_record);
}

}  // namespace
}  // namespace ravelinox::testing
