// Writes "Output.ssi", from which the passenger displays take their data: a header about the
// station and a block for each train. Labels are the format's own, to the space.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/cells.hpp"
#include "core/clock.hpp"
#include "passenger/platform_changes.hpp"
#include "passenger/train_categories.hpp"
#include "passenger/train_run.hpp"
#include "platform/arithmetic.hpp"
#include "platform/component_file.hpp"
#include "platform/statement.hpp"
#include "platform/text_file.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

constexpr std::string_view time_of_day = "h.nn";

/// The own station's row of one train, as the displays show it.
struct Call {
  std::int32_t train;
  std::string_view category;
  Variant arrival;
  Variant departure;
  std::string track;  ///< of the timetable
  Variant note;
};

std::string shown_time(const Variant& time) {
  return present(time) ? format(to_date_time(to_int32(time)), time_of_day) : std::string();
}

std::string_view stop_code(const Call& call) {
  return !present(call.arrival) ? "0" : !present(call.departure) ? "1" : "2";
}

bool leaves_within_5_minutes(const Call& call, Timestamp moment) {
  constexpr std::int32_t seconds = 300;
  return present(call.departure) && checked_subtract(to_int32(call.departure), moment) < seconds;
}

void write_header(TextFile& file, cmdl1& engine, Timestamp moment) {
  file.write_line(statement("Stazione di         = ", engine.Nome_PdS));
  file.write_line(
      statement("Ora inizio simulazione      = ", format(to_date_time(moment), time_of_day)));
  engine.DLLRS->open("SELECT NumeriBinari FROM proprieta");
  const std::string tracks = to_text(cell(*engine.DLLRS, 0));
  // The displays expect the highest index of the tracks counted from 0; no track at all gives -1.
  const std::int64_t highest = tracks.empty() ? -1 : std::ranges::count(tracks, ',');
  file.write_line(statement("Numero binari stazione      = ", highest));
  file.write_line(statement("Numeri binari stazione      = ", tracks));
  engine.DLLRS->close();
}

/// The last change of platform that the host keeps for the train, or the timetable's track.
std::string shown_track(const cmdl1& engine, const Call& call) {
  const Variant& changes = engine.AutAsModificheBin;
  return changed_platform(changes.is_missing() ? std::string() : joined(changes), call.train)
      .value_or(call.track);
}

void write_block(TextFile& file, cmdl1& engine, const Call& call, Timestamp moment) {
  constexpr std::uint8_t delay_step = 5;
  const TrainRun run(call.train, joined(engine.CorsaTreno(call.train)));
  const std::string origin = run.origin();
  const std::string destination = run.destination();
  const std::string arrival = shown_time(call.arrival);
  const std::string departure = shown_time(call.departure);
  const bool soon = leaves_within_5_minutes(call, moment);
  const std::string track = shown_track(engine, call);
  const Variant delay = engine.RicavaRitardo(call.train, moment, delay_step);
  const Variant following = engine.FermateSuccessive(call.train, engine.Nome_PdS);
  for (const std::string& line :
       {std::string(), std::string(), std::string("Prossimo treno:"),
        statement("Tipologia di treno = ", stop_code(call)), std::string("Situazione = NP"),
        statement("Numero Treno = ", call.train), statement("Destinazione = ", destination),
        statement("Provenienza = ", origin), statement("Categoria = ", call.category),
        statement("Ritardo = ", delay), statement("Arrivo = ", arrival),
        statement("Partenza = ", departure), statement("Binario = ", track),
        statement("Fermate Successive = ", following), std::string("Indicazioni Sussidiarie = 0"),
        statement("Note = ", call.note),
        statement("Partenza < 5 minuti = ", soon ? "True" : "False"),
        std::string("Codice identificativo = 0000"), std::string("Indice Ritardo = 0")}) {
    file.write_line(line);
  }
}

/// Positions in the train selection.
enum Position : std::int16_t {
  numero,
  classificazione,
  orario_arrivo,
  orario_partenza,
  binario,
  note,
  undertaking,
};

/// Writes the current row's block, unless the displays do not show its category or the train
/// passes without stopping.
void write_call(TextFile& file, cmdl1& engine, Recordset& row, Timestamp moment) {
  const auto category = display_category(joined(cell(row, classificazione)),
                                         joined(cell(row, note)), joined(cell(row, undertaking)));
  if (!category) return;
  const Call call{to_int32(cell(row, numero)), *category,
                  cell(row, orario_arrivo),    cell(row, orario_partenza),
                  joined(cell(row, binario)),  cell(row, note)};
  const bool passes = present(call.arrival) && present(call.departure) &&
                      to_int32(call.arrival) == to_int32(call.departure);
  if (!passes) write_block(file, engine, call, moment);
}

}  // namespace

void cmdl1::AggiornaFileSSI(std::int32_t Tempo) {
  TextFile file = TextFile::create(component_file("Output.ssi"));
  write_header(file, *this, Tempo);
  DLLRS4->open(
      statement("SELECT circolazione.Numero, Classificazione, Orario_arrivo, Orario_partenza, "
                "Binario, Note, IF FROM generalita_treni INNER JOIN circolazione ON "
                "circolazione.numero = generalita_treni.numero WHERE (Orario_arrivo > '",
                Tempo, "' OR Orario_partenza > '", Tempo, "') AND Stazione = '", Nome_PdS, "'"));
  for (; !DLLRS4->end_of_file(); DLLRS4->move_next()) write_call(file, *this, *DLLRS4, Tempo);
  DLLRS4->close();
  file.close();
}

}  // namespace ravelinox
