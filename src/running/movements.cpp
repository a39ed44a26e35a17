// Records what really happens to a train and keeps the rest of its run consistent with it.
#include <cstdint>
#include <exception>
#include <string>

#include "core/cells.hpp"
#include "core/clock.hpp"
#include "platform/arithmetic.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

namespace {

/// Runs a step of a recording. A movement that happened must be recorded as far as can be, so a
/// step that fails is left out and the next one runs. Tells whether the step was done.
template <class Step>
bool done(Step&& step) {
  try {
    step();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

/// One recording on its way through its steps.
struct Recording {
  cmdl1& engine;
  std::int32_t train;
  Timestamp moment;
  const Variant& station;
  std::int32_t deviation = 0;  ///< the moment minus the expected time
  Timestamp scheduled = 0;

  [[nodiscard]] std::string at_station() const {
    return statement(" WHERE Numero = ", train, " AND Stazione = '", station, "'");
  }

  /// Reads the expected and the scheduled time of the train's first row at the station; what
  /// cannot be read stays 0. A slot that an earlier failure left open is closed unread. False when
  /// the row says that there is no such event.
  bool compare(std::string_view columns) {
    Recordset& row = *engine.DLLRS3;
    bool event_exists = true;
    const bool opened =
        done([&] { row.open(statement("SELECT ", columns, " FROM circolazione", at_station())); });
    if (opened && row.record_count() != 0) {
      done([&] { event_exists = !cell(row, 0).is_null(); });
      done([&] { deviation = checked_subtract(moment, to_int32(cell(row, 0))); });
      done([&] { scheduled = to_int32(cell(row, 1)); });
    }
    done([&] { row.close(); });
    return event_exists;
  }

  void write(std::string_view assignments) {
    done([&] {
      engine.DLLRS3->open(statement("UPDATE circolazione SET ", assignments, at_station()));
    });
  }

  void shift_rest_of_run() {
    done([&] {
      engine.RitardaTreno(train, checked<std::int16_t>(deviation), checked_add(scheduled, 1));
    });
  }
};

void record_arrival(Recording& recording) {
  if (!recording.compare("Effettivo_arrivo, Orario_arrivo")) return;  // the origin
  recording.write(statement("Effettivo_arrivo = '", recording.moment,
                            "', Effettiva_partenza = Orario_partenza + ", recording.deviation));
  recording.shift_rest_of_run();
  done([&] { frmTelefonoINdll().TreniArrivati.append(recording.train); });
}

void record_departure(Recording& recording) {
  // A departure where none was expected is recorded all the same.
  recording.compare("Effettiva_partenza, Orario_partenza");
  recording.write(statement("Effettiva_partenza = '", recording.moment, "'"));
  recording.shift_rest_of_run();
  done([&] { frmTelefonoINdll().TreniPartiti.append(recording.train); });
}

MovementList& list_of(const Variant& event) {
  const auto* word = event.get_if<std::string>();
  if (word != nullptr && *word == "Arrivo") return frmTelefonoINdll().TreniArrivati;
  if (word != nullptr && *word == "Partenza") return frmTelefonoINdll().TreniPartiti;
  throw Error(ErrorNumber::subscript_out_of_range,
              "A movement is an \"Arrivo\" or a \"Partenza\"; there is no list of others.");
}

}  // namespace

Variant cmdl1::RegistraEvento(const std::string& TipoEvento, std::int32_t NumTreno,
                              std::int32_t Orario, const Variant& Stazione) {
  Recording recording{*this, NumTreno, Orario, Stazione};
  if (TipoEvento == "Arrivo") record_arrival(recording);
  if (TipoEvento == "Partenza") record_departure(recording);
  return {};
}

Variant cmdl1::RitardaTreno(std::int32_t NumTreno, std::int16_t Secondi, std::int32_t Tempo,
                            const Variant& CausaRitardo) {
  DLLRS5->open(statement("UPDATE circolazione SET Effettivo_arrivo = Effettivo_arrivo + ", Secondi,
                         ", Effettiva_partenza = Effettiva_partenza + ", Secondi,
                         " WHERE (Effettiva_partenza >= '", Tempo, "' AND Effettivo_arrivo >= '",
                         Tempo, "') AND Numero = ", NumTreno));
  if (!CausaRitardo.is_missing()) {
    done([&] {
      DLLRS3->open(statement("UPDATE generalita_treni SET Causa_ritardo = '", CausaRitardo,
                             "' WHERE Causa_ritardo = '--' AND Numero = ", NumTreno));
    });
  }
  return {};
}

bool cmdl1::CercaListaTreni(std::int32_t NumTreno, const Variant& Evento) {
  if (list_of(Evento).contains(NumTreno)) return true;
  DLLRS5->open(
      statement("SELECT Effettivo_arrivo, Effettiva_partenza FROM circolazione"
                " WHERE Numero = ",
                NumTreno, " AND Stazione = '", Nome_PdS, "' AND (Effettivo_arrivo < '", StartTime,
                "' OR Effettiva_partenza < '", StartTime, "')"));
  const bool happened = DLLRS5->record_count() != 0;
  DLLRS5->close();
  return happened;
}

}  // namespace ravelinox
