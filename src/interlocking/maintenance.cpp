// Wears the station's entities and reports their state. States are 32-bit floats in their shortest
// decimal form, so that a wear that takes all leaves exactly 0.
#include <charconv>
#include <cmath>
#include <string>

#include "core/cells.hpp"
#include "platform/number_text.hpp"
#include "platform/random.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

/// The condition that selects an entity. 13 with neither ID nor kind.
std::string entity(const Variant& kind, std::int16_t number, std::int16_t id) {
  if (id != 0) return statement(" WHERE ID = ", id);
  return statement(" WHERE Tipo_ente LIKE '", kind, "%' AND Numero = ", number);
}

float read_state(cmdl1& engine, const std::string& condition) {
  engine.DLLRS->open(statement("SELECT Stato_manutenzione FROM enti", condition));
  const float state = to_float32(cell(*engine.DLLRS, 0));
  engine.DLLRS->close();
  return state;
}

/// The shortest decimal digits that read back as the same float, never with an exponent.
std::string decimal(float value) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed);
  return {digits, end.ptr};
}

/// Four decimal places of the decimal form, halves away from zero.
float rounded_to_four_places(float value) {
  constexpr double places = 10000;
  // Shifting the mark in the text keeps halves exact; a product would not.
  return static_cast<float>(std::round(*parse_number(decimal(value) + "e4")) / places);
}

float worn_amount(float state, std::int16_t fault_chance, double draw) {
  if (state == 0) {
    throw Error(ErrorNumber::division_by_zero, "The entity's maintenance state is 0 already.");
  }
  const float wear =
      rounded_to_four_places(to_float32(fault_chance * draw / 1000 / static_cast<double>(state)));
  return state - wear >= 0 ? wear : state;
}

}  // namespace

void cmdl1::DecrementaManutenzione(const Variant& TipoEnte, std::int16_t NumeroEnte,
                                   std::int16_t IDEnte) {
  const std::string condition = entity(TipoEnte, NumeroEnte, IDEnte);
  const float state = read_state(*this, condition);
  platform().random->reseed();
  const float amount = worn_amount(state, Global_ProbabilitaGuasti, draw());
  DLLRS->open(statement("UPDATE enti SET Stato_manutenzione = Stato_manutenzione - ",
                        decimal(amount), condition));
}

float cmdl1::RicavaStatoManutenzione(const Variant& TipoEnte, std::int16_t NumeroEnte,
                                     std::int16_t IDEnte) {
  return read_state(*this, entity(TipoEnte, NumeroEnte, IDEnte));
}

}  // namespace ravelinox
