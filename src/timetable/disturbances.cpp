#include "timetable/disturbances.hpp"

#include <cmath>
#include <string_view>

#include "platform/random.hpp"
#include "platform/statement.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

namespace {

constexpr std::string_view central_dispatcher = "Dirigente centrale";

}  // namespace

bool drawn_one_in(RandomSource& random, std::int16_t one_in) {
  random.reseed();
  return draw_below(random, one_in) == std::floor(one_in / 2.0);
}

void reset_train(cmdl1& engine, std::int32_t train) {
  engine.DLLRS4->open(
      statement("UPDATE generalita_treni SET Marcia_Prioritaria = False, Causa_ritardo = '--', "
                "Velocita = Velocita_max, Posizione1 = 'L', Posizione2 = 'S', Stato = '0', "
                "Senso = True WHERE Numero = ",
                train));
}

void draw_priority(cmdl1& engine, std::int32_t train) {
  constexpr double chances = 10000;
  constexpr double drawn = 5000;
  RandomSource& random = *platform().random;
  random.reseed();
  if (draw_below(random, chances) != drawn) return;
  frmTelefonoINdll().RiceviComunicazione(
      "Dirigente Coordinatore Movimento",
      statement("Applicare marcia prioritaria al treno ", train, ". "));
  engine.DLLRS4->open(
      statement("UPDATE generalita_treni SET Marcia_Prioritaria = True WHERE Numero = ", train));
}

void draw_delay_cause(cmdl1& engine, std::int32_t train) {
  engine.DLLRS4->open(statement("UPDATE generalita_treni SET Causa_ritardo = '",
                                engine.CausaRitardo("Ritardo Comune"), "' WHERE Numero = ", train,
                                " AND Causa_ritardo = '--'"));
}

void announce_suppression(std::string_view day, std::int32_t train) {
  frmTelefonoINdll().RiceviComunicazione(central_dispatcher,
                                         statement(day, " il treno ", train, " è soppresso."));
}

void announce_extraordinary_train(std::int32_t train) {
  frmTelefonoINdll().RiceviComunicazione(
      central_dispatcher, statement("Oggi effettualsi treno straodrinario ", train, "."));
}

}  // namespace ravelinox
