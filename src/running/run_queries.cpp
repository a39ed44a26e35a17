// Where a train comes from and goes to, where it stops next, and between which stations it is.
#include <cstdint>
#include <string>

#include "core/cells.hpp"
#include "platform/statement.hpp"
#include "platform/text_case.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

Recordset& open_run(cmdl1& engine, std::string_view columns, std::int32_t train) {
  Recordset& rows = *engine.DLLRS3;
  rows.open(statement("SELECT ", columns, " FROM circolazione WHERE Numero = ", train,
                      " ORDER BY Orario_arrivo ASC"));
  return rows;
}

bool stops(const Variant& arrival, const Variant& departure) {
  return present(arrival) && present(departure) && to_int32(arrival) != to_int32(departure);
}

/// Equality of station names without regard to case; Null equals nothing.
bool same_station(const Variant& a, const Variant& b) {
  return !a.is_null() && !b.is_null() && equal_ignoring_case(to_text(a), to_text(b));
}

}  // namespace

Variant cmdl1::CorsaTreno(std::int32_t NumTreno) {
  Recordset& ends = *DLLRS3;
  ends.open(statement("SELECT Stazione FROM circolazione WHERE Numero = ", NumTreno,
                      " AND (Orario_arrivo IS NULL XOR Orario_partenza IS NULL)"
                      " ORDER BY Orario_arrivo ASC"));
  Variant run;
  if (ends.record_count() != 0) {
    const Variant origin = cell(ends, 0);
    ends.move_next();
    run = statement(origin, " - ", cell(ends, 0));
  }
  ends.close();
  return run;
}

Variant cmdl1::FermateSuccessive(std::int32_t NumTreno, const Variant& /*StazioneInizio*/) {
  Recordset& rows = open_run(*this, "Stazione, Orario_arrivo, Orario_partenza", NumTreno);
  // Past the last row this fails: the train does not come through here.
  while (!same_station(cell(rows, 0), Nome_PdS)) rows.move_next();
  rows.move_next();
  std::string following;
  for (; !rows.end_of_file(); rows.move_next()) {
    if (stops(cell(rows, 1), cell(rows, 2))) following += joined(cell(rows, 0)) + ",";
  }
  rows.close();
  return following + ".";
}

Variant cmdl1::RicavaPosizioneTreno(std::int32_t NumTreno, std::int32_t Tempo) {
  Recordset& rows = open_run(*this, "Stazione, Effettivo_arrivo, Effettiva_partenza", NumTreno);
  rows.move_first();
  Variant last;
  Variant next;
  for (; !rows.end_of_file(); rows.move_next()) {
    const Variant arrival = cell(rows, 1);
    if (present(arrival) && to_int32(arrival) > Tempo) {
      next = cell(rows, 0);
      rows.move_previous();  // before the first row this leaves none to read
      last = cell(rows, 0);
      break;
    }
    last = cell(rows, 0);
    next = present(arrival) ? last : Variant();
  }
  rows.close();
  return statement(last, "|", next);
}

}  // namespace ravelinox
