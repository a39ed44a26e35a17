// The host's own reading of the timetable's rows.
#include "host/timetable.hpp"

#include <map>
#include <utility>

#include "host/rows.hpp"

namespace ravelinox::host {
namespace {

constexpr std::string_view columns =
    "Numero, Stazione, Orario_arrivo, Orario_partenza, Effettivo_arrivo, Effettiva_partenza, "
    "Secondi_fermata, Binario";

RunStop stop_at(Recordset& row) {
  return {text_at(row, 1),   number_at(row, 2), number_at(row, 3),
          number_at(row, 4), number_at(row, 5), number_at(row, 6).value_or(0),
          text_at(row, 7)};
}

}  // namespace

const char* event_word(Event event) { return event == Event::arrival ? "Arrivo" : "Partenza"; }

std::vector<Run> runs_through(StationSession& station) {
  std::map<std::int32_t, std::vector<RunStop>> stops;
  const std::string select =
      "SELECT " + std::string(columns) +
      " FROM circolazione WHERE Numero = ANY (SELECT DISTINCT Numero FROM circolazione WHERE "
      "Stazione = " +
      literal(station.name()) + ") ORDER BY Orario_arrivo ASC";
  each_row(station.timetable(), select,
           [&](Recordset& row) { stops[to_int32(row.field(0).value())].push_back(stop_at(row)); });
  std::vector<Run> runs;
  runs.reserve(stops.size());
  for (auto& [train, run] : stops) runs.push_back({train, std::move(run)});
  return runs;
}

std::vector<RunStop> stops_of(StationSession& station, std::int32_t train) {
  std::vector<RunStop> stops;
  const std::string select = "SELECT " + std::string(columns) +
                             " FROM circolazione WHERE Numero = " + std::to_string(train) +
                             " ORDER BY Orario_arrivo ASC";
  each_row(station.timetable(), select, [&](Recordset& row) { stops.push_back(stop_at(row)); });
  return stops;
}

}  // namespace ravelinox::host
