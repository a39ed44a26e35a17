// Prepares the timetable of the simulated day: the week moves, every train is reset, and the
// trains of today, of tomorrow and on demand are drawn and moved onto the day, list by list.
// Nothing is kept between the steps but what stands in the databases.
#include "core/cells.hpp"
#include "platform/random.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"
#include "timetable/calendar.hpp"
#include "timetable/disturbances.hpp"
#include "timetable/run_walk.hpp"

namespace ravelinox {

namespace {

/// Trains with any time after the start move back by a week, except what lies in the first week.
void shift_week(cmdl1& engine, Timestamp start) {
  engine.DLLRS3->open(
      statement("UPDATE circolazione SET Orario_arrivo = Orario_arrivo - 604800, "
                "Orario_partenza = Orario_partenza - 604800, "
                "Effettivo_arrivo = Effettivo_arrivo - 604800, "
                "Effettiva_partenza = Effettiva_partenza - 604800 "
                "WHERE (Orario_arrivo > '604800' OR Orario_partenza > '604800') AND "
                "Numero = any (SELECT DISTINCT Numero FROM circolazione WHERE Orario_arrivo > '",
                start, "' OR Orario_partenza > '", start, "' OR Effettivo_arrivo > '", start,
                "' OR Effettiva_partenza > '", start, "')"));
}

void reset_all_trains(cmdl1& engine) {
  engine.DLLRS3->open(
      "UPDATE generalita_treni SET Posizione1 = 'L', Posizione2 = 'S', Stato = '0'");
}

/// Walks a list of trains to its end; the first column is the number, the second the length.
template <class EachTrain>
void for_each_train(cmdl1& engine, const std::string& list, EachTrain&& each) {
  Recordset& trains = *engine.DLLRS3;
  trains.open(list);
  for (; !trains.end_of_file(); trains.move_next()) {
    const bool has_length = trains.field_count() > 1;
    each(ListedTrain{to_int32(cell(trains, 0)), has_length ? cell(trains, 1) : Variant()});
  }
  trains.close();
}

void set_up_today(cmdl1& engine, const SetUpDay& day, const CalendarDay& today) {
  for_each_train(engine, train_list_statement("Numero, Lunghezza", today),
                 [&](const ListedTrain& train) {
                   if (drawn_one_in(*platform().random, engine.Global_ProbabilitaSoppressione)) {
                     return announce_suppression("Oggi", train.number);
                   }
                   reset_train(engine, train.number);
                   draw_priority(engine, train.number);
                   walk_train_of_today(engine, day, train);
                 });
}

void set_up_tomorrow(cmdl1& engine, const SetUpDay& day, const CalendarDay& tomorrow) {
  for_each_train(engine, train_list_statement("Numero", tomorrow), [&](const ListedTrain& train) {
    if (drawn_one_in(*platform().random, engine.Global_ProbabilitaSoppressione)) {
      return announce_suppression("Domani", train.number);
    }
    walk_train_of_tomorrow(engine, day, train);
  });
}

void set_up_extraordinary(cmdl1& engine, const SetUpDay& day) {
  for_each_train(engine, "SELECT Numero, Lunghezza FROM generalita_treni WHERE Giorni = ''",
                 [&](const ListedTrain& train) {
                   if (!drawn_one_in(*platform().random, engine.Global_ProbabilitaSoppressione)) {
                     return;
                   }
                   announce_extraordinary_train(train.number);
                   reset_train(engine, train.number);
                   draw_priority(engine, train.number);
                   walk_extraordinary_train(engine, day, train);
                 });
}

}  // namespace

Variant cmdl1::Inzializza_Orario(std::int32_t Inizio, std::int32_t MezzanotteInizio) {
  const SetUpDay day{Inizio, MezzanotteInizio};
  shift_week(*this, Inizio);
  reset_all_trains(*this);
  const CalendarDay today = calendar_day(to_date_time(Inizio));
  const CalendarDay tomorrow = calendar_day(to_date_time(checked_add(Inizio, one_day)));
  set_up_today(*this, day, today);
  set_up_tomorrow(*this, day, tomorrow);
  set_up_extraordinary(*this, day);
  return {};
}

}  // namespace ravelinox
