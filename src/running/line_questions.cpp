// What the host asks about trains between stations: which comes next from a neighbour, and which
// of two loses less time.
#include <cstdint>
#include <string>

#include "core/cells.hpp"
#include "core/clock.hpp"
#include "platform/arithmetic.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

/// Whether exactly one departure of the train from the neighbour precedes its arrival here.
bool comes_from(cmdl1& engine, const Variant& neighbour, const Variant& train,
                const Variant& arrival) {
  Recordset& departures = *engine.DLLRS4;
  departures.open(statement("SELECT Effettiva_partenza FROM circolazione WHERE Stazione = '",
                            neighbour, "' AND Numero = ", train, " AND Effettiva_partenza < '",
                            arrival, "'"));
  const bool one = departures.record_count() == 1;
  departures.close();
  return one;
}

/// How much delay a train gains on the first section whose beginning is not the station, in
/// seconds; negative when it wins time back.
std::int32_t delay_gained(cmdl1& engine, std::int32_t train, const Variant& station) {
  Recordset& rows = *engine.DLLRS3;
  rows.open(
      statement("SELECT Stazione, Effettivo_arrivo, Effettiva_partenza, Orario_arrivo, "
                "Orario_partenza FROM circolazione WHERE Numero = ",
                train, " ORDER BY Effettivo_arrivo ASC"));
  while (same_text(cell(rows, 0), station)) rows.move_next();
  const std::int32_t leaving = checked_subtract(to_int32(cell(rows, 2)), to_int32(cell(rows, 4)));
  rows.move_next();
  const std::int32_t arriving = checked_subtract(to_int32(cell(rows, 1)), to_int32(cell(rows, 3)));
  rows.close();
  return checked_subtract(arriving, leaving);
}

}  // namespace

Variant cmdl1::ProssimoArrivo(const Variant& MioPdS, const Variant& PdsAdiacente,
                              std::int32_t Tempo, std::int32_t TrenoPrecedente) {
  Timestamp best = 0;  // 0 stands for none yet
  std::int32_t next_train = 0;
  Recordset& arrivals = *DLLRS3;
  arrivals.open(statement("SELECT Numero, Effettivo_arrivo FROM circolazione WHERE Stazione = '",
                          MioPdS, "'"));
  for (; !arrivals.end_of_file(); arrivals.move_next()) {
    const Variant train = cell(arrivals, 0);
    const Variant arrival = cell(arrivals, 1);
    if (!comes_from(*this, PdsAdiacente, train, arrival)) continue;
    const Timestamp moment = to_int32(arrival);
    const std::int32_t number = to_int32(train);
    if (moment > Tempo && (moment < best || best == 0) && number != TrenoPrecedente) {
      best = moment;
      next_train = number;
    }
  }
  arrivals.close();
  return statement(checked_subtract(best, Tempo), "|", next_train);
}

bool cmdl1::AnalisiPrecedenza(std::int32_t NumTreno1, std::int32_t NumTreno2,
                              const Variant& Stazione) {
  const std::int32_t first = delay_gained(*this, NumTreno1, Stazione);
  const std::int32_t second = delay_gained(*this, NumTreno2, Stazione);
  if (first <= 0) return false;
  return second <= 0 || second <= first;
}

}  // namespace ravelinox
