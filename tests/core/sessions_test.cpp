#include <gtest/gtest.h>

#include <filesystem>

#include "support/station.hpp"

namespace ravelinox::testing {
namespace {

using enum ErrorNumber;

TEST(Sessions, DisconnectAndConnectAgain) {
  Station station("1 R ' 3 '; A - 8:00; B 9:00 -");
  cmdl1& engine = station.engine;
  const auto old = engine.DLLCN.get();
  EXPECT_EQ(error_of([&] { engine.Connetti_DBstazione_DLL(); }), object_open);
  engine.DLLRS3->open("SELECT * FROM circolazione");  // as a failure leaves it
  engine.Disconnetti_DB();
  EXPECT_EQ(engine.DLLRS->active_connection(), old);
  EXPECT_EQ(engine.DLLRS3->record_count(), 2);
  EXPECT_EQ(error_of([&] { engine.RitardaTreno(1, 0, 0); }), object_closed);
  engine.Connetti_DBstazione_DLL();
  engine.DB_stazione = "without a folder";
  engine.DB_linea = station.line_file;
  engine.Connetti_DBlinea_DLL();
  EXPECT_NE(engine.DLLCN.get(), old);
  EXPECT_EQ(engine.CorsaTreno(1), Variant("A - B"));
}

TEST(Sessions, PropertiesThatAreNotThereFail) {
  const TemporaryFolder folder;
  cmdl1 engine;
  engine.DB_stazione = folder.file("station.db");
  engine.DB_linea = "kept";
  create_station_database(folder.file("station.db"));
  engine.Connetti_DBstazione_DLL();
  EXPECT_EQ(error_of([&] { engine.Imposta_proprieta_pds(); }), no_current_record);
  EXPECT_EQ(engine.DLLRS->state(), ObjectState::open);
  EXPECT_EQ(engine.DB_linea, Variant("kept"));
}

TEST(Check, TellsHowFarAFileIsUsable) {
  Station station("");
  const std::string missing = station.folder.file("missing.db");
  EXPECT_EQ(station.engine.VerificaDB(station.station_file, ""), 7);
  EXPECT_EQ(station.engine.VerificaDB(station.line_file, ""), 1);
  EXPECT_EQ(station.engine.VerificaDB(missing, ""), 0);
  EXPECT_EQ(station.engine.VerificaDB(Variant::missing(), ""), 0);
  EXPECT_FALSE(std::filesystem::exists(missing));
}

}  // namespace
}  // namespace ravelinox::testing
