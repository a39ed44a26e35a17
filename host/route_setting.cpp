// Which route a train takes follows from its platform track and the station next to it in its run.
#include "host/route_setting.hpp"

#include <algorithm>
#include <charconv>

#include "host/rows.hpp"

namespace ravelinox::host {
namespace {

/// The numbers that begin the items of a list separated by spaces: of points "3|R", of a track "4".
std::vector<std::int16_t> leading_numbers(std::string_view items) {
  std::vector<std::int16_t> numbers;
  while (!items.empty()) {
    const std::size_t end = std::min(items.find(' '), items.size());
    std::int16_t number = 0;
    const char* const begin = items.data();
    if (std::from_chars(begin, begin + end, number).ec == std::errc{}) numbers.push_back(number);
    items.remove_prefix(std::min(end + 1, items.size()));
  }
  return numbers;
}

Route route_in(Recordset& row) {
  const bool arrival = text_at(row, 1) == "arrivo";
  const std::string signals = text_at(row, 5);
  return {text_at(row, 0),
          arrival ? Event::arrival : Event::departure,
          text_at(row, arrival ? 2 : 3),
          text_at(row, 4),
          signals.substr(0, signals.find('|')),
          leading_numbers(text_at(row, 6))};
}

/// The station before or behind the own one in a train's run; empty at the run's ends.
std::string station_beside(const std::vector<RunStop>& stops, const std::string& own, Event event) {
  const auto here = std::ranges::find(stops, own, &RunStop::station);
  if (here == stops.end()) return {};
  if (event == Event::arrival) return here == stops.begin() ? "" : std::prev(here)->station;
  return std::next(here) == stops.end() ? "" : std::next(here)->station;
}

}  // namespace

RouteSetting::RouteSetting(StationSession& station, Attempt& attempt) : station_(station) {
  attempt("The station's routes", [&] {
    each_row(*station.component.DLLRS2,
             "SELECT Nome, Tipo, Origine, Destinazione, Binario, Segnali, Deviatoi FROM itinerari",
             [&](Recordset& row) { routes_.push_back(route_in(row)); });
  });
}

const Route* RouteSetting::route_of(const Movement& movement) {
  const std::string neighbour =
      station_beside(stops_of(station_, movement.train), station_.name(), movement.event);
  const auto route = std::ranges::find_if(routes_, [&](const Route& each) {
    return each.event == movement.event && each.neighbour == neighbour &&
           each.track == movement.stop.track;
  });
  return route == routes_.end() ? nullptr : &*route;
}

std::optional<std::string> RouteSetting::set_for(const Movement& movement, Attempt& attempt) {
  cmdl1& component = station_.component;
  std::optional<std::string> shown;
  attempt("The route of train " + std::to_string(movement.train), [&] {
    const Route* const route = route_of(movement);
    if (route == nullptr) return;
    component.C_Sgn(route->name, route->signal);
    std::string aspect = joined(component.Aspetto_sgn);
    if (const std::size_t bar = aspect.find('|'); bar != std::string::npos) {
      aspect.replace(bar, 1, " shows ");
    }
    shown = aspect;
    for (const std::int16_t points : route->points) {
      component.DecrementaManutenzione("Deviatoio", points);
    }
    for (const std::int16_t track : leading_numbers(route->track)) {
      component.DecrementaManutenzione("CDB", track);
    }
  });
  return shown;
}

}  // namespace ravelinox::host
