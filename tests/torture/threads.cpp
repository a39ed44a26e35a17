// Two threads with an object each on the same station, for the thread sanitizer. The station's
// folder, with backslashes, is the argument.
#include <cstdint>
#include <string>
#include <thread>

#include "ravelinox/cmdl1.hpp"
#include "ravelinox/error.hpp"

namespace {

void live_a_day(const std::string& folder) {
  constexpr std::int32_t midnight = 1776816000;
  ravelinox::cmdl1 engine;
  engine.DB_stazione = folder + "\\stazione.db";
  engine.Connetti_DBstazione_DLL();
  engine.Imposta_proprieta_pds();
  engine.Connetti_DBlinea_DLL();
  engine.Nome_PdS = "Empoli";
  engine.Global_ProbabilitaSoppressione = 100;
  for (int round = 0; round < 3; ++round) {
    try {
      engine.Inzializza_Orario(midnight + 6 * 3600, midnight);
    } catch (const ravelinox::Error&) {
      engine.DLLRS3->close();  // the other thread changed a row meanwhile
      if (engine.DLLRSMovimL->state() == ravelinox::ObjectState::open) engine.DLLRSMovimL->close();
    }
    for (std::int32_t train = 18850; train < 18900; ++train) {
      engine.RegistraEvento("Arrivo", train, midnight + train, "Empoli");
      (void)engine.RicavaInfoCircolazione(train, midnight + train);
      (void)engine.CercaListaTreni(train, "Arrivo");
    }
    engine.AggiornaFileSSI(midnight);
    engine.Registra("a line");
  }
  engine.Disconnetti_DB();
}

}  // namespace

int main(int /*count*/, char** arguments) {
  const std::string folder = arguments[1];
  std::thread other(live_a_day, folder);
  live_a_day(folder);
  other.join();
}
