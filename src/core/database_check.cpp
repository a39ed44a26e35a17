// The check of a candidate station database, on a session of its own.
#include <array>
#include <exception>
#include <memory>
#include <string_view>

#include "core/session_settings.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

constexpr std::array<std::string_view, 6> station_tables{"banco",    "deviatoi",  "enti",
                                                         "finestre", "itinerari", "proprieta"};

/// Counts the steps that succeed: the opening, then each table; the first failure throws.
void count_usable(const std::string& path, std::uint8_t& steps) {
  const auto connection = std::make_shared<Connection>();
  open_session(*connection, path);
  Recordset rows;
  bind_slot(rows, connection);
  ++steps;
  for (const std::string_view table : station_tables) {
    rows.open(statement("SELECT * FROM ", table));
    rows.close();
    ++steps;
  }
}

}  // namespace

std::uint8_t cmdl1::VerificaDB(const Variant& Percorso, const Variant& /*TipoDB*/) {
  std::uint8_t steps = 0;
  try {
    count_usable(joined(Percorso), steps);
  } catch (const std::exception&) {
    // How far the check got is the answer.
  }
  return steps;
}

}  // namespace ravelinox
