#include "national.hpp"

#include <unistd.h>

#include <algorithm>
#include <vector>

#include "ravelinox/database.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox::bench {

namespace {

std::string station_at(int train, int place) {
  if (place == 9) return own_station;
  if (place == 8) return neighbour_before;
  return "Stazione " + std::to_string(train % 97) + " di linea " + std::to_string(place);
}

void add_train(RowWriter& rows, int train) {
  const std::vector<Variant> general{train, "R", "TI",  "",   " 1 2 3 4 5 ", 200, "L",
                                     "S",   "0", false, "--", 140,           140, true};
  rows.append("generalita_treni", general);
  std::int32_t moment = 4 * 3600 + train % 64800;
  for (int place = 0; place < stations_per_train; ++place) {
    const Variant arrival = place == 0 ? Variant::null() : Variant(moment);
    moment += 60;
    const Variant departure = place + 1 == stations_per_train ? Variant::null() : Variant(moment);
    moment += 240;
    const std::vector<Variant> row{
        train, station_at(train, place),     arrival, departure, arrival, departure, 30,
        20,    std::to_string(train % 9 + 1)};
    rows.append("circolazione", row);
  }
}

std::filesystem::path new_folder() {
  std::string pattern =
      (std::filesystem::temp_directory_path() / "ravelinox-bench-XXXXXX").string();
  return mkdtemp(pattern.data());
}

}  // namespace

std::int32_t start_of_day() { return cmdl1().MkTime(3, 0, 0, 22, 4, 2026); }

National::National(int trains) : folder_(new_folder()) {
  create_station_database((folder_ / "station.db").string());
  RowWriter station((folder_ / "station.db").string());
  station.append("proprieta",
                 std::vector<Variant>{1, own_station, "C", "", "line.db", "1,2,3,4,5,6,7,8,9"});
  station.append("enti", std::vector<Variant>{1, "CDB", 1, 100, "stazionamento", 300});
  station.commit();
  create_line_database(line_file());
  RowWriter line(line_file());
  for (int train = 1; train <= trains; ++train) add_train(line, train);
  line.commit();
  std::filesystem::copy_file(line_file(), folder_ / "first.db");
}

National::~National() {
  std::error_code left_behind;  // nothing more can be done about it
  std::filesystem::remove_all(folder_, left_behind);
}

void National::restore() const {
  for (const char* companion : {"-wal", "-shm"}) std::filesystem::remove(line_file() + companion);
  std::filesystem::copy_file(folder_ / "first.db", line_file(),
                             std::filesystem::copy_options::overwrite_existing);
}

void National::open(cmdl1& engine) const {
  std::string path = (folder_ / "station.db").string();
  std::ranges::replace(path, '/', '\\');
  engine.DB_stazione = path;
  engine.Nome_PdS = own_station;
  engine.StartTime = start_of_day();
  engine.Global_ProbabilitaSoppressione = 1000;
  engine.Global_Puntualita = 20;  // no train gets late enough for a cause
  // The lists of recorded trains outlive the engine; what one benchmark recorded would change what
  // another asks.
  frmTelefonoINdll().TreniArrivati = "";
  frmTelefonoINdll().TreniPartiti = "";
  engine.Connetti_DBstazione_DLL();
  engine.Imposta_proprieta_pds();
  engine.Connetti_DBlinea_DLL();
}

}  // namespace ravelinox::bench
