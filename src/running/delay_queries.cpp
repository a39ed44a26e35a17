// How late a train is, as a short signed text and as a sentence. Movements at the own station
// count once they are recorded.
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/cells.hpp"
#include "core/clock.hpp"
#include "platform/arithmetic.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

constexpr std::string_view no_information =
    "Nessuna informazione è disponibile riguardo al treno indicato.";

/// Whole minutes, rounded down.
std::int32_t delay_minutes(const Variant& expected, const Variant& scheduled) {
  constexpr double seconds_per_minute = 60;
  const std::int32_t seconds = checked_subtract(to_int32(expected), to_int32(scheduled));
  return static_cast<std::int32_t>(std::floor(seconds / seconds_per_minute));
}

std::int32_t rounded_down_to(std::int32_t step, std::int32_t minutes) {
  return static_cast<std::int32_t>(std::floor(static_cast<double>(minutes) / step)) * step;
}

std::string signed_minutes(std::int32_t minutes) {
  const std::string_view sign = minutes > 0 ? "+ " : minutes < 0 ? "- " : "  ";
  return statement(sign, std::abs(minutes));
}

bool by(const Variant& time, Timestamp moment) { return present(time) && to_int32(time) <= moment; }

/// The two movements of a row: their event words and the positions of their columns.
struct MovementColumns {
  std::string_view event;
  std::int16_t scheduled;
  std::int16_t expected;
};

/// A movement at the own station that the host has not recorded: nothing behind it is known.
bool unrecorded_here(cmdl1& engine, const Variant& station, std::int32_t train,
                     std::string_view event) {
  return same_text(station, engine.Nome_PdS) && !engine.CercaListaTreni(train, event);
}

std::int32_t last_due_delay(cmdl1& engine, Recordset& rows, std::int32_t train, Timestamp moment) {
  constexpr std::int16_t station = 5;
  constexpr MovementColumns movements[]{{"Arrivo", 0, 2}, {"Partenza", 1, 3}};
  std::int32_t delay = 0;
  for (; !rows.end_of_file(); rows.move_next()) {
    std::optional<Variant> here;  // read once a row, and only when asked for
    for (const MovementColumns& movement : movements) {
      const Variant scheduled = cell(rows, movement.scheduled);
      if (!present(scheduled)) continue;
      if (!here) here = cell(rows, station);
      if (unrecorded_here(engine, *here, train, movement.event)) return delay;
      if (to_int32(scheduled) <= moment) {
        delay = delay_minutes(cell(rows, movement.expected), scheduled);
      }
    }
  }
  return delay;
}

/// The last movement that a train is known to have made.
struct LastMovement {
  std::int32_t delay = 0;
  std::string_view phrase;
  Variant station;
  std::optional<std::int32_t> time;
};

struct ReportedColumns {
  MovementColumns columns;
  std::string_view phrase;
};

LastMovement last_movement(cmdl1& engine, Recordset& rows, std::int32_t train, Timestamp moment) {
  constexpr ReportedColumns movements[]{
      {{"Arrivo", 1, 3}, "arrivato nella stazione di "},
      {{"Partenza", 2, 4}, "partito/transitato dalla stazione di "}};
  LastMovement last;
  for (; !rows.end_of_file(); rows.move_next()) {
    for (const auto& [columns, phrase] : movements) {
      const Variant scheduled = cell(rows, columns.scheduled);
      const Variant expected = cell(rows, columns.expected);
      if (!present(scheduled) || !by(expected, moment)) continue;
      Variant station = cell(rows, 0);
      if (unrecorded_here(engine, station, train, columns.event)) return last;
      last = {delay_minutes(expected, scheduled), phrase, std::move(station), to_int32(expected)};
    }
  }
  return last;
}

std::string movements_by(std::string_view condition_on_train, std::int32_t train,
                         Timestamp moment) {
  return statement(condition_on_train, train, " AND (Effettivo_arrivo <= '", moment,
                   "' OR Effettiva_partenza <= '", moment, "') ORDER BY Orario_arrivo ASC");
}

/// The sentence from the rows of the movements so far; the first row is where it all began.
std::string running_sentence(cmdl1& engine, Recordset& rows, const std::string& category,
                             std::int32_t train, Timestamp moment) {
  if (rows.end_of_file()) return std::string(no_information);
  const Variant origin = cell(rows, 0);
  const Variant arrival = cell(rows, 1);
  const Variant departure = cell(rows, 2);
  if (!present(arrival) && unrecorded_here(engine, origin, train, "Partenza")) {
    return std::string(no_information);
  }
  const DateTime day = to_date_time(to_int32(present(departure) ? departure : arrival));
  const LastMovement last = last_movement(engine, rows, train, moment);
  const std::string time = last.time ? format(to_date_time(*last.time), "h:nn") : std::string();
  return statement("Il treno ", category, " ", train, ", partito da ", origin, " il giorno ",
                   format(day, "d/mm/yyyy"), ", viaggia con ", last.delay,
                   " minuti di ritardo. Il treno è ", last.phrase, last.station, " alle ore ", time,
                   ".");
}

}  // namespace

Variant cmdl1::RicavaRitardo(std::int32_t NumTreno, std::int32_t Tempo,
                             std::uint8_t Approssimazione) {
  DLLRS3->open(movements_by(
      "SELECT Orario_arrivo, Orario_partenza, Effettivo_arrivo, Effettiva_partenza, Posizione1, "
      "Stazione FROM circolazione INNER JOIN generalita_treni ON circolazione.Numero = "
      "generalita_treni.Numero WHERE circolazione.Numero = ",
      NumTreno, Tempo));
  const bool known = DLLRS3->record_count() != 0;
  std::int32_t delay = last_due_delay(*this, *DLLRS3, NumTreno, Tempo);
  DLLRS3->close();
  if (Approssimazione != 0) delay = rounded_down_to(Approssimazione, delay);
  const bool started = RicavaInfoCircolazione(NumTreno, Tempo) != Variant(no_information);
  return known && started ? signed_minutes(delay) : "--";
}

Variant cmdl1::RicavaInfoCircolazione(std::int32_t NumTreno, std::int32_t Tempo) {
  DLLRS3->open(statement("SELECT Classificazione, Posizione1 FROM generalita_treni WHERE Numero = ",
                         NumTreno));
  const bool known = !DLLRS3->end_of_file();
  const std::string category = known ? joined(cell(*DLLRS3, 0)) : std::string();
  DLLRS3->close();
  if (!known) return no_information;

  DLLRS3->open(movements_by(
      "SELECT Stazione, Orario_arrivo, Orario_partenza, Effettivo_arrivo, Effettiva_partenza FROM "
      "circolazione WHERE Numero = ",
      NumTreno, Tempo));
  std::string sentence = running_sentence(*this, *DLLRS3, category, NumTreno, Tempo);
  DLLRS3->close();
  return sentence;
}

}  // namespace ravelinox
