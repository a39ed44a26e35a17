#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/station.hpp"

namespace ravelinox {
namespace {

using testing::error_of;
using testing::Station;
using testing::Table;
using testing::TemporaryFolder;

TEST(Object, StartsEmpty) {
  cmdl1 engine;
  EXPECT_FALSE(engine.RispRich_fs || engine.Ric_sgn);
  EXPECT_EQ(engine.StartTime, 0);
  EXPECT_TRUE(engine.Aspetto_sgn.is_empty());
  engine.Disconnetti_DB();
  EXPECT_FALSE(engine.DLLCN.has_object() || engine.DLLRS.has_object());
  engine.VisMovimento();
}

TEST(Sessions, DisconnectAndConnectAgain) {
  Station station("1 R ' 3 '; A - 8:00; B 9:00 -");
  cmdl1& engine = station.engine;
  const auto old = engine.DLLCN.get();
  EXPECT_EQ(error_of([&] { engine.Connetti_DBstazione_DLL(); }), ErrorNumber::object_open);
  engine.DLLRS3->open("SELECT * FROM circolazione");  // as a failure leaves it
  engine.Disconnetti_DB();
  EXPECT_EQ(engine.DLLRS->active_connection(), old);
  EXPECT_EQ(engine.DLLRS3->record_count(), 2);
  EXPECT_EQ(error_of([&] { engine.RitardaTreno(1, 0, 0); }), ErrorNumber::object_closed);
  engine.Connetti_DBstazione_DLL();
  engine.Connetti_DBlinea_DLL();
  EXPECT_NE(engine.DLLCN.get(), old);
  EXPECT_EQ(engine.CorsaTreno(1), Variant("A - B"));
}

TEST(Sessions, TheLineDatabaseLiesBesideTheStations) {
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  std::filesystem::create_directory("Dati");
  for (const auto& [station, line, path] : Table<const char*, const char*, const char*>{
           {"Dati\\Staz.db", "Linea.db", "Dati\\Linea.db"}, {"Staz.db", "bare.db", "bare.db"}}) {
    create_line_database(path);
    cmdl1 engine;
    engine.DB_stazione = station;
    engine.DB_linea = line;
    EXPECT_EQ(error_of([&] { engine.Connetti_DBlinea_DLL(); }), std::nullopt) << station;
  }
  std::filesystem::current_path(before);
}

TEST(Sessions, PropertiesThatAreNotThereFail) {
  Station station("");
  cmdl1& engine = station.engine;
  engine.DB_linea = "kept";
  std::filesystem::remove(station.station_file);
  engine.Disconnetti_DB();
  create_station_database(station.station_file);
  engine.Connetti_DBstazione_DLL();
  EXPECT_EQ(error_of([&] { engine.Imposta_proprieta_pds(); }), ErrorNumber::no_current_record);
  EXPECT_EQ(engine.DLLRS->state(), ObjectState::open);
  EXPECT_EQ(engine.DB_linea, Variant("kept"));
}

TEST(Check, TellsHowFarAFileIsUsable) {
  Station station("");
  std::ofstream(station.folder.file("empty.db")).close();
  for (const auto& [path, result] : Table<Variant, int>{{station.station_file, 7},
                                                        {station.line_file, 1},
                                                        {station.folder.file("missing.db"), 0},
                                                        {station.folder.file("empty.db"), 0},
                                                        {Variant::null(), 0},
                                                        {Variant::missing(), 0}}) {
    EXPECT_EQ(station.engine.VerificaDB(path, ""), result);
  }
  EXPECT_FALSE(std::filesystem::exists(station.folder.file("missing.db")));
}

}  // namespace
}  // namespace ravelinox
