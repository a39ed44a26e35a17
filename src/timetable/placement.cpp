#include "timetable/placement.hpp"

#include <cmath>
#include <string_view>

#include "core/cells.hpp"
#include "platform/arithmetic.hpp"
#include "platform/statement.hpp"

namespace ravelinox {

namespace {

bool before(const Variant& time, Timestamp moment) {
  return present(time) && to_int32(time) < moment;
}

bool after(const Variant& time, Timestamp moment) {
  return present(time) && to_int32(time) > moment;
}

/// Whether another train is expected on the row's track after the start and before it leaves.
bool track_is_taken(cmdl1& engine, const PlacedRow& row, Timestamp start) {
  Recordset& arrivals = *engine.DLLRS4;
  arrivals.open(statement(
      "SELECT Numero, Stazione, Orario_arrivo, Orario_partenza, Effettivo_arrivo,  "
      "Effettiva_partenza FROM circolazione WHERE Binario = '",
      row.platform_track, "' AND Stazione = '", engine.Nome_PdS, "' AND Effettivo_arrivo < ",
      row.expected_departure, " AND Effettivo_arrivo > ", start));
  const bool taken = arrivals.record_count() != 0;
  arrivals.close();
  return taken;
}

/// How much the train's length and its track's differ, in digits; nothing for a Null length.
Variant length_difference(std::int16_t track_length, const Variant& train_length) {
  if (train_length.is_null()) return train_length;
  return std::abs(track_length - to_float64(train_length));
}

/// The placement statement takes its length from a stabling track chosen at random, whose number
/// stands for the platform track of a standing extraordinary train.
void place(cmdl1& engine, const PlacedRow& row, const Variant& train_length, bool on_stabling_track,
           std::string_view state) {
  Recordset& stabling = *engine.DLLRS;
  stabling.open(
      "SELECT TOP 1 Numero, Lunghezza_reale FROM enti WHERE Tipo_CDB = 'stazionamento' OR "
      "Tipo_CDB = 'stazionamento DM' ORDER BY Rnd(Numero)");
  const std::int16_t track_length = to_int16(cell(stabling, 1));
  engine.DLLRS4->open(statement("UPDATE generalita_treni SET Velocita = 0, Posizione1 = 'PdS|",
                                engine.Nome_PdS, "', Posizione2 = '",
                                on_stabling_track ? cell(stabling, 0) : row.platform_track, " 0|",
                                length_difference(track_length, train_length), "', Stato = '",
                                state, "' WHERE Numero = ", row.train));
  stabling.close();
}

}  // namespace

bool stands_at_start(const PlacedRow& row, Timestamp start) {
  return present(row.scheduled_arrival) && present(row.scheduled_departure) &&
         before(row.expected_arrival, start) && after(row.expected_departure, start);
}

bool leaves_soon(const PlacedRow& row, Timestamp start) {
  constexpr std::int32_t one_hour = 3600;
  return !present(row.scheduled_arrival) && present(row.scheduled_departure) &&
         after(row.expected_departure, start) &&
         before(row.expected_departure, checked_add(start, one_hour));
}

void place_train(cmdl1& engine, const PlacedRow& row, TrainList list, const Variant& train_length,
                 Timestamp start) {
  if (stands_at_start(row, start)) {
    const bool today = list == TrainList::today;
    place(engine, row, train_length, !today, today ? "15 30" : "20");
  }
  if (leaves_soon(row, start) && !track_is_taken(engine, row, start)) {
    place(engine, row, train_length, false, "20");
  }
}

}  // namespace ravelinox
