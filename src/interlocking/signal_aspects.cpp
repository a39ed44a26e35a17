// Works out what a route's signal shows, from the route, the station's accesses and the line
// section behind the access.
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/cells.hpp"
#include "interlocking/aspect.hpp"
#include "interlocking/line_section.hpp"
#include "platform/number_text.hpp"
#include "platform/statement.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

namespace {

struct Route {
  std::string origin_signal;
  std::string own_aspect;
  std::int16_t access = 0;
};

/// "name|value" in its two pieces. 9 when the second is missing.
struct Pair {
  std::string_view name;
  std::string_view value;
};

Pair pair_of(std::string_view item) {
  const std::size_t bar = item.find('|');
  if (bar == std::string_view::npos) {
    throw Error(ErrorNumber::subscript_out_of_range,
                "The item \"" + std::string(item) + "\" has no part behind a \"|\".");
  }
  const std::string_view rest = item.substr(bar + 1);
  return {item.substr(0, bar), rest.substr(0, rest.find('|'))};
}

Route read_route(cmdl1& engine, const Variant& name) {
  constexpr std::int16_t signals_position = 7;
  constexpr std::int16_t access_position = 9;
  Recordset& row = *engine.DLLRS;
  row.open(statement("SELECT * FROM itinerari WHERE Nome = '", name, "'"));
  const std::string signals = to_text(cell(row, signals_position));
  const Pair origin = pair_of(std::string_view(signals).substr(0, signals.find(' ')));
  Route route{std::string(origin.name), std::string(origin.value),
              to_int16(cell(row, access_position))};
  row.close();
  return route;
}

Variant read_station_name(cmdl1& engine) {
  engine.DLLRS->open("SELECT Nome_Stazione FROM proprieta");
  Variant name = cell(*engine.DLLRS, 0);
  engine.DLLRS->close();
  return name;
}

std::string read_access_list(cmdl1& engine, const Variant& station) {
  constexpr std::int16_t list_position = 1;
  engine.DLLRS3->open(statement("SELECT * FROM accessi WHERE Nome_stazione = '", station, "'"));
  std::string list = to_text(cell(*engine.DLLRS3, list_position));
  engine.DLLRS3->close();
  return list;
}

/// Whether an access item carries the number. 13 when its number is none.
bool names_access(std::string_view item, std::int16_t access) {
  const std::string_view number = item.substr(0, item.find('|'));
  if (const std::optional<double> value = parse_number(number)) return *value == access;
  throw Error(ErrorNumber::type_mismatch,
              "The access item \"" + std::string(item) + "\" does not begin with a number.");
}

/// The neighbour that an access leads to; nothing when no item has its number.
std::string neighbour_behind(std::string_view list, std::int16_t access) {
  constexpr std::string_view separator = "  ";
  for (std::size_t begin = 0; !list.empty() && begin <= list.size();) {
    const std::size_t end = std::min(list.find(separator, begin), list.size());
    const std::string_view item = list.substr(begin, end - begin);
    if (names_access(item, access)) return std::string(pair_of(item).value);
    begin = end + separator.size();
  }
  return {};
}

}  // namespace

void cmdl1::C_Sgn(const Variant& Itinerario, const Variant& OptSegnale) {
  constexpr EndColumns aspect_columns{6, 12};
  constexpr EndColumns variant_columns{7, 13};
  const Route route = read_route(*this, Itinerario);
  const Variant wanted = OptSegnale.is_missing() ? Variant("") : OptSegnale;
  if (!wanted.is_null() && to_text(wanted) != route.origin_signal) {
    Aspetto_sgn = statement(wanted, "|", route.own_aspect);
    return;
  }
  const Variant station = read_station_name(*this);
  const std::string list = read_access_list(*this, station);
  const std::string neighbour = neighbour_behind(list, route.access);
  const SectionEnd end = open_section(*this, station, neighbour);
  const std::string letter = joined(at_end(*this, end, aspect_columns));
  const Variant variant = at_end(*this, end, variant_columns);
  DLLRS3->close();
  const bool has_variant = letter == "G" && !variant.is_null() && to_boolean(variant);
  const auto aspect = route_aspect(route.own_aspect, letter, has_variant);
  if (!aspect) return;
  Aspetto_sgn = statement(route.origin_signal, "|", aspect->code);
  Ric_sgn = aspect->changed_by_line;
}

}  // namespace ravelinox
