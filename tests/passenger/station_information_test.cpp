#include <gtest/gtest.h>

#include <regex>

#include "passenger/train_categories.hpp"
#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using Values = std::vector<std::string>;

/// The value of a label in each block, in order.
Values values(const std::string& file, const std::string& label) {
  const std::regex line("\n" + label + " = (.*)\r");
  return {std::sregex_token_iterator(file.begin(), file.end(), line, 1), {}};
}

TEST(StationInformation, TheFileToTheByte) {
  Station station(R"(
2345 IC ' 3 ' if=TI note=ICN
  Forlì - 8:00; Empoli 9:05 9:07 track=3; Cantù 9:20 9:22; Pisa 9:30 -
)");
  station.engine.AggiornaFileSSI(at("9:04"));
  EXPECT_EQ(station.folder.bytes("Output.ssi"),
            "Stazione di         = Empoli\r\n"
            "Ora inizio simulazione      = 9.04\r\n"
            "Numero binari stazione      = 3\r\n"
            "Numeri binari stazione      = 1,2,3,4\r\n"
            "\r\n"
            "\r\n"
            "Prossimo treno:\r\n"
            "Tipologia di treno = 2\r\n"
            "Situazione = NP\r\n"
            "Numero Treno = 2345\r\n"
            "Destinazione = Pisa\r\n"
            "Provenienza = Forl\xEC\r\n"
            "Categoria = Intercity Notte\r\n"
            "Ritardo =   0\r\n"
            "Arrivo = 9.05\r\n"
            "Partenza = 9.07\r\n"
            "Binario = 3\r\n"
            "Fermate Successive = Cant\xF9,.\r\n"
            "Indicazioni Sussidiarie = 0\r\n"
            "Note = ICN\r\n"
            "Partenza < 5 minuti = True\r\n"
            "Codice identificativo = 0000\r\n"
            "Indice Ritardo = 0\r\n");
}

TEST(StationInformation, WhichTrainsAndHow) {
  Station station(R"(
1 R ' 3 '; Empoli - 9:05 track=1; Pisa 9:30 -
2 R ' 3 '; Siena - 8:00; Empoli 9:01 - track=2
3 MRV ' 3 '; Siena - 8:00; Empoli 9:05 9:06; Pisa 9:30 -
4 R ' 3 '; Siena - 8:00; Empoli 9:05 9:05; Pisa 9:30 -
5 R ' 3 '; Siena - 8:00; Empoli 8:50 8:52; Pisa 9:30 -
)");
  cmdl1& engine = station.engine;
  engine.AutAsModificheBin = "2@9|1@7|x@1||1@8|1";
  engine.AggiornaFileSSI(at("9:00"));
  const std::string file = station.folder.bytes("Output.ssi");
  for (const auto& [label, expected] :
       Table<const char*, Values>{{"Numero Treno", {"1", "2"}},
                                  {"Tipologia di treno", {"0", "1"}},
                                  {"Arrivo", {"", "9.01"}},
                                  {"Partenza", {"9.05", ""}},
                                  {"Binario", {"8", "2"}},
                                  {"Partenza < 5 minuti", {"False", "False"}}}) {
    EXPECT_EQ(values(file, label), expected) << label;
  }
  engine.AggiornaFileSSI(at("9:00:01"));
  EXPECT_EQ(values(station.folder.bytes("Output.ssi"), "Partenza < 5 minuti"),
            (Values{"True", "False"}));
  engine.AggiornaFileSSI(at("10:00"));
  EXPECT_EQ(values(station.folder.bytes("Output.ssi"), "Numero Treno"), Values{});
}

TEST(StationInformation, FailuresKeepWhatWasWritten) {
  Station station("1 R ' 3 '; Siena - 8:00; Empoli 9:05 9:06");
  cmdl1& engine = station.engine;
  // The run, which has no end, is asked for before the changes, which are no text.
  engine.AutAsModificheBin = std::shared_ptr<Object>();
  EXPECT_EQ(error_of([&] { engine.AggiornaFileSSI(at("9:00")); }), ErrorNumber::no_current_record);
  EXPECT_EQ(values(station.folder.bytes("Output.ssi"), "Numeri binari stazione     "),
            Values{"1,2,3,4"});
  EXPECT_EQ(engine.DLLRS4->state(), ObjectState::open);
  platform().component_folder += "/missing";
  EXPECT_EQ(error_of([&] { engine.AggiornaFileSSI(at("9:00")); }), ErrorNumber::path_not_found);
}

TEST(Categories, AreShownByCodeMarkAndUndertaking) {
  for (const auto& [code, note, undertaking, shown] :
       Table<const char*, const char*, const char*, const char*>{{"ES*", "tBiz", "", "tBiz"},
                                                                 {"ES*", "x", "", "Eurostar"},
                                                                 {"EC", "", "CIS", "Cisalpino"},
                                                                 {"S", "", "TI", "Suburbano"},
                                                                 {"S", "", "MetNA", "Metronapoli"},
                                                                 {"r", "", "", "none"},
                                                                 {"NCLS", "", "", "none"}}) {
    EXPECT_EQ(display_category(code, note, undertaking).value_or("none"), shown) << code << note;
  }
}

}  // namespace
}  // namespace ravelinox::testing
