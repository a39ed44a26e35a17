// The trains that leave a station in the next hour, from a host in C++.
//
//     board STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM
//
// The folder holds stazione.db, such as `ravelinox import` writes.
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <ravelinox/cmdl1.hpp>
#include <ravelinox/error.hpp>
#include <ravelinox/platform.hpp>
#include <string>
#include <utility>
#include <vector>

namespace {

using ravelinox::cmdl1;

struct Moment {
  int year, month, day, hour, minute;
};

/// The start-up order: sessions, own station, the day's timetable. Gives the timestamp of now.
std::int32_t start(cmdl1& engine, const std::string& folder, const std::string& station,
                   const Moment& moment) {
  engine.DB_stazione = folder + "\\stazione.db";  // a backslash, on every platform
  engine.Connetti_DBstazione_DLL();
  engine.Imposta_proprieta_pds();
  engine.Connetti_DBlinea_DLL();
  engine.Nome_PdS = station;
  engine.Global_ProbabilitaSoppressione = 50;  // one train in fifty; 0 suppresses all
  engine.Global_Puntualita = 300;              // seconds
  const std::int32_t midnight = engine.MkTime(0, 0, 0, static_cast<std::uint8_t>(moment.day),
                                              static_cast<std::uint8_t>(moment.month),
                                              static_cast<std::int16_t>(moment.year));
  engine.StartTime = midnight + moment.hour * 3600 + moment.minute * 60;
  engine.Inzializza_Orario(engine.StartTime, midnight);
  return engine.StartTime;
}

using Departure = std::pair<std::int32_t, std::int32_t>;  // train, expected time

/// Read whole before the slot serves other questions.
std::vector<Departure> departures(cmdl1& engine, const std::string& station, std::int32_t now) {
  ravelinox::Recordset& rows = *engine.DLLRS3;
  rows.open("SELECT Numero, Effettiva_partenza FROM circolazione WHERE Stazione = '" + station +
            "' AND Effettiva_partenza >= " + std::to_string(now) + " AND Effettiva_partenza < " +
            std::to_string(now + 3600) + " ORDER BY Effettiva_partenza");
  std::vector<Departure> found;
  for (; !rows.end_of_file(); rows.move_next())
    found.emplace_back(to_int32(rows.field(0).value()), to_int32(rows.field(1).value()));
  rows.close();
  return found;
}

/// What a host that goes on after a failed call does first.
void close_open_slots(cmdl1& engine) {
  for (auto* slot : {&engine.DLLRS, &engine.DLLRS3, &engine.DLLRS4, &engine.DLLRS5})
    if ((*slot)->state() == ravelinox::ObjectState::open) (*slot)->close();
}

/// The train's delay now, or why it cannot be told.
std::string delay_of(cmdl1& engine, std::int32_t train, std::int32_t now) {
  try {
    return to_text(engine.RicavaRitardo(train, now));
  } catch (const ravelinox::Error& failure) {
    close_open_slots(engine);
    return failure.what();
  }
}

}  // namespace

int main(int argc, char** argv) try {
  Moment moment{};
  if (argc != 5 ||
      std::sscanf(argv[3], "%d-%d-%d", &moment.year, &moment.month, &moment.day) != 3 ||
      std::sscanf(argv[4], "%d:%d", &moment.hour, &moment.minute) != 2) {
    std::cerr << "usage: board STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM\n";
    return 2;
  }
  // Output.ssi and the log go where this host may write.
  ravelinox::platform().component_folder = argv[1];

  cmdl1 engine;
  const std::int32_t now = start(engine, argv[1], argv[2], moment);
  for (const auto& [train, leaves] : departures(engine, argv[2], now)) {
    std::cout << format(engine.UnMkTime(leaves), "hh:nn") << "  " << train << "  "
              << delay_of(engine, train, leaves) << "  " << to_text(engine.CorsaTreno(train))
              << '\n';
  }
  engine.AggiornaFileSSI(now);
  engine.Disconnetti_DB();
  return 0;
} catch (const ravelinox::Error& failure) {
  std::cerr << "board: " << failure.number() << ": " << failure.what() << '\n';
  return 1;
}
