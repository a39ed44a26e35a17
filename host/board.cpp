// The station's board: the host's own reading of the timetable. The information file that the
// component writes knows scheduled times only; this one also knows who stands and who is late.
#include "host/board.hpp"

#include <algorithm>

#include "host/rows.hpp"
#include "host/text_table.hpp"
#include "host/track_changes.hpp"

namespace ravelinox::host {
namespace {

/// How long before the moment a time may lie for its train to be still about: later trains than
/// that are not told from those that do not run today.
constexpr Timestamp longest_delay = 6 * hour;

/// How long a train that ended its run stays on the board of arrivals.
constexpr Timestamp arrived_shown = 5 * minute;

constexpr std::string_view run_separator = " - ";

bool on_arrivals(const BoardCall& call, Timestamp moment, const Happened& happened) {
  const auto arrival = expected_time(call, Event::arrival);
  if (!arrival) return false;
  if (!happened(call, Event::arrival)) return true;
  if (call.stop.expected_departure) return !happened(call, Event::departure);
  return moment - *arrival < arrived_shown;
}

bool on_departures(const BoardCall& call, const Happened& happened) {
  return call.stop.expected_departure && !happened(call, Event::departure);
}

BoardRow row_of(const BoardCall& call, Event side, const Happened& happened) {
  BoardRow row;
  row.train = call.train;
  row.category = call.category;
  row.track = row.planned_track = call.stop.track;
  row.expected = *expected_time(call, side);
  row.scheduled = call.stop.scheduled(side).value_or(row.expected);
  row.at_platform = call.stop.expected_arrival && happened(call, Event::arrival);
  return row;
}

bool comes_sooner(const BoardRow& left, const BoardRow& right) {
  return std::tie(left.expected, left.train) < std::tie(right.expected, right.train);
}

std::string delay_text(const BoardRow& row) {
  const std::int32_t delay = row.delay_minutes();
  if (delay == 0) return "";
  return (delay > 0 ? "+" : "") + std::to_string(delay);
}

std::string remarks(const BoardRow& row, Event side) {
  std::string text;
  if (row.at_platform) text = side == Event::arrival ? "arrived" : "at the platform";
  if (row.track == row.planned_track) return text;
  return text + (text.empty() ? "" : ", ") + "platform changed from " + row.planned_track;
}

}  // namespace

std::int32_t BoardRow::delay_minutes() const {
  const std::int32_t seconds = expected - scheduled;
  return seconds >= 0 ? seconds / minute : -((-seconds + minute - 1) / minute);
}

Happened by_expectation(Timestamp moment) {
  return [moment](const BoardCall& call, Event event) {
    const auto time = expected_time(call, event);
    return time && *time <= moment;
  };
}

std::optional<Timestamp> expected_time(const BoardCall& call, Event event) {
  const RunStop& stop = call.stop;
  if (event == Event::arrival || !stop.expected_departure || !stop.expected_arrival) {
    return stop.expected(event);
  }
  return std::max(*stop.expected_departure, *stop.expected_arrival + stop.dwell);
}

Board sort_calls(const std::vector<BoardCall>& calls, Timestamp moment, Timestamp horizon,
                 const Happened& happened) {
  Board board;
  for (const BoardCall& call : calls) {
    if (call.stop.passes()) continue;
    if (on_arrivals(call, moment, happened)) {
      board.arrivals.push_back(row_of(call, Event::arrival, happened));
    }
    if (on_departures(call, happened)) {
      board.departures.push_back(row_of(call, Event::departure, happened));
    }
  }
  for (std::vector<BoardRow>* side : {&board.arrivals, &board.departures}) {
    std::erase_if(*side, [&](const BoardRow& row) {
      return row.expected > moment + horizon || row.expected < moment - longest_delay;
    });
    std::sort(side->begin(), side->end(), comes_sooner);
  }
  return board;
}

Board BoardReader::read(Timestamp moment, Timestamp horizon, const Happened& happened) {
  Board board = sort_calls(calls_around(moment, horizon), moment, horizon, happened);
  for (BoardRow& row : board.arrivals) complete(row, Event::arrival);
  for (BoardRow& row : board.departures) complete(row, Event::departure);
  return board;
}

std::vector<BoardCall> BoardReader::calls_around(Timestamp moment, Timestamp horizon) {
  const std::string from = std::to_string(moment - longest_delay);
  const std::string to = std::to_string(moment + horizon);
  const std::string select =
      "SELECT circolazione.Numero, Classificazione, Orario_arrivo, Orario_partenza, "
      "Effettivo_arrivo, Effettiva_partenza, Secondi_fermata, Binario FROM generalita_treni INNER "
      "JOIN circolazione ON circolazione.Numero = generalita_treni.Numero WHERE Stazione = " +
      literal(station_.name()) + " AND (Effettivo_arrivo >= " + from +
      " OR Effettiva_partenza >= " + from + ") AND (Effettivo_arrivo <= " + to +
      " OR Effettiva_partenza <= " + to + ")";
  std::vector<BoardCall> calls;
  each_row(station_.timetable(), select, [&](Recordset& row) {
    RunStop stop{station_.name(),   number_at(row, 2), number_at(row, 3),
                 number_at(row, 4), number_at(row, 5), number_at(row, 6).value_or(0),
                 text_at(row, 7)};
    calls.push_back({to_int32(row.field(0).value()), text_at(row, 1), std::move(stop)});
  });
  return calls;
}

void BoardReader::complete(BoardRow& row, Event event) {
  const std::string changes = joined(station_.component.AutAsModificheBin);
  row.track = changed_track(changes, row.train).value_or(row.planned_track);
  const std::string& run = run_of(row.train);
  const std::size_t middle = run.find(run_separator);
  if (middle == std::string::npos) return;
  row.place =
      event == Event::arrival ? run.substr(0, middle) : run.substr(middle + run_separator.size());
}

const std::string& BoardReader::run_of(std::int32_t train) {
  const auto known = runs_.find(train);
  if (known != runs_.end()) return known->second;
  std::string run;
  attempt_("The run of train " + std::to_string(train),
           [&] { run = joined(station_.component.CorsaTreno(train)); });
  return runs_[train] = run;
}

std::vector<std::string> board_lines(const Board& board, Event side, std::size_t limit) {
  const auto& trains = side == Event::arrival ? board.arrivals : board.departures;
  if (trains.empty()) return {side == Event::arrival ? "No arrivals." : "No departures."};
  std::vector<std::vector<std::string>> cells;
  for (const BoardRow& row : trains) {
    if (cells.size() == limit) break;
    cells.push_back({show_time(row.scheduled), row.category + " " + std::to_string(row.train),
                     row.place, row.track, show_time(row.expected), delay_text(row),
                     remarks(row, side)});
  }
  return table_lines({{"Time"},
                      {side == Event::arrival ? "Arrival" : "Departure", 14},
                      {side == Event::arrival ? "From" : "To", 28},
                      {"Platform"},
                      {"Expected"},
                      {"Delay"},
                      {"", 40}},
                     cells);
}

}  // namespace ravelinox::host
