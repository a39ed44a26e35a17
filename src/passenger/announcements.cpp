// Speaks one announcement: takes a voice, reads what the procedure needs from the timetable, and
// hands the finished sentence over.
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/cells.hpp"
#include "passenger/spoken_phrases.hpp"
#include "passenger/spoken_sentences.hpp"
#include "platform/random.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"
#include "ravelinox/platform.hpp"

namespace ravelinox {

namespace {

/// A sentence, the empty one too, is spoken; nothing ends the call in silence.
using Sentence = std::optional<std::string>;

struct Parameters {
  const Variant& first;
  const Variant& second;
};

std::unique_ptr<Voice> make_voice() {
  std::unique_ptr<Voice> voice = platform().voice ? platform().voice() : nullptr;
  if (!voice) {
    throw Error(ErrorNumber::cannot_create_object,
                "There is no voice to announce with: set Platform::voice.");
  }
  return voice;
}

/// Closes the slot whatever happens, so that the next announcement finds it free.
class OpenSlot {
 public:
  OpenSlot(Recordset& slot, const std::string& source) : slot_(slot) { slot_.open(source); }
  OpenSlot(const OpenSlot&) = delete;
  OpenSlot& operator=(const OpenSlot&) = delete;
  ~OpenSlot() {
    if (slot_.state() == ObjectState::open) slot_.close();
  }

 private:
  Recordset& slot_;
};

std::string delay_text(cmdl1& engine, std::int32_t train, const Variant& moment) {
  constexpr std::uint8_t step = 5;
  return joined(engine.RicavaRitardo(train, to_int32(moment), step));
}

std::string next_stops(cmdl1& engine, std::int32_t train) {
  return joined(engine.FermateSuccessive(train, engine.Nome_PdS));
}

Sentence arrival(cmdl1& engine, const AnnouncedTrain& train, const Parameters& parameters) {
  const bool passes = present(train.arrival) && present(train.departure) &&
                      to_int32(train.arrival) == to_int32(train.departure);
  if (passes) return std::nullopt;
  const bool goes_on = train.run.destination() != joined(engine.Nome_PdS);
  const std::string delay = delay_text(engine, train.number, parameters.first);
  return goes_on ? through_arrival_sentence(train, delay, next_stops(engine, train.number))
                 : last_arrival_sentence(train, delay);
}

Sentence departing(cmdl1& engine, const AnnouncedTrain& train, const Parameters& /*unused*/) {
  return departure_sentence(train, " è in partenza dal binario ", next_stops(engine, train.number));
}

Sentence ready(cmdl1& engine, const AnnouncedTrain& train, const Parameters& /*unused*/) {
  return departure_sentence(train, " è pronto sul binario ", next_stops(engine, train.number));
}

Sentence delay(cmdl1& engine, const AnnouncedTrain& train, const Parameters& parameters) {
  return delay_sentence(train, delay_text(engine, train.number, parameters.first));
}

Sentence platform_change(cmdl1& /*unused*/, const AnnouncedTrain& train,
                         const Parameters& parameters) {
  return platform_change_sentence(train, parameters.first, parameters.second);
}

std::string transit(const Parameters& parameters) { return transit_sentence(parameters.first); }
std::string station(const Parameters& parameters) { return station_sentence(parameters.first); }

std::string general(const Parameters& /*unused*/) {
  constexpr double span = 2.99;  // so the last message comes slightly less often
  return std::string(
      general_messages.at(static_cast<std::size_t>(draw_below(*platform().random, span))));
}

/// Which columns a train's row has: those of an arrival, or of a departure.
enum class Row { arrival, departure };

struct TrainProcedure {
  std::string_view name;
  Row row;
  Sentence (*compose)(cmdl1&, const AnnouncedTrain&, const Parameters&);
};

constexpr std::array<TrainProcedure, 5> train_procedures{
    {{"Arrivo", Row::arrival, arrival},
     {"Partenza", Row::departure, departing},
     {"Pronto", Row::departure, ready},
     {"Ritardo", Row::departure, delay},
     {"Cambio binario", Row::departure, platform_change}}};

struct GeneralProcedure {
  std::string_view name;
  std::string (*compose)(const Parameters&);
};

constexpr std::array<GeneralProcedure, 3> general_procedures{
    {{"Transito", transit}, {"Stazione", station}, {"Comunicazioni generali", general}}};

std::string row_query(Row row, std::int32_t train, const Variant& station) {
  return statement(
      "SELECT generalita_treni.Numero, Classificazione, IF, Causa_ritardo, ",
      row == Row::arrival ? "Orario_arrivo, Binario, Orario_partenza" : "Orario_partenza, Binario",
      " FROM generalita_treni INNER JOIN circolazione ON generalita_treni.Numero = "
      "circolazione.Numero WHERE generalita_treni.Numero = ",
      train, " AND Stazione = '", station, "'");
}

Sentence about_train(cmdl1& engine, std::int32_t number, const TrainProcedure& procedure,
                     const Parameters& parameters) {
  const TrainRun run(number, joined(engine.CorsaTreno(number)));
  Recordset& row = *engine.DLLRS4;
  const OpenSlot open(row, row_query(procedure.row, number, engine.Nome_PdS));
  const auto category = spoken_category(joined(cell(row, 1)));
  if (!category) return std::nullopt;
  const bool arrives = procedure.row == Row::arrival;
  return procedure.compose(
      engine,
      {number, *category, joined(cell(row, 2)), joined(cell(row, 3)),
       arrives ? cell(row, 4) : Variant(), cell(row, arrives ? 6 : 4), joined(cell(row, 5)), run},
      parameters);
}

Sentence compose(cmdl1& engine, std::int32_t train, std::string_view name,
                 const Parameters& parameters) {
  for (const TrainProcedure& procedure : train_procedures) {
    if (procedure.name == name) return about_train(engine, train, procedure, parameters);
  }
  for (const GeneralProcedure& procedure : general_procedures) {
    if (procedure.name == name) return procedure.compose(parameters);
  }
  return std::string();
}

}  // namespace

void cmdl1::AutAsSintesiVocale(std::int32_t NumTreno, const std::string& Procedura,
                               const Variant& Parametro1, const Variant& Parametro2) {
  const std::unique_ptr<Voice> voice = make_voice();
  const Sentence sentence = compose(*this, NumTreno, Procedura, {Parametro1, Parametro2});
  if (sentence) voice->speak(*sentence);
}

}  // namespace ravelinox
