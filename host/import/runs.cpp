// Rows of a timetable become runs that the engine can follow: every station once, times that rise
// from station to station.
#include "host/import/runs.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>

namespace ravelinox::host {
namespace {

constexpr std::int32_t day_seconds = 86'400;
constexpr std::int32_t longest_run = 5 * day_seconds;  // the stored week has seven
constexpr std::int32_t usual_dwell = 30;

void sort_rows(std::vector<TimetableRow>& rows) {
  const auto before = [](const TimetableRow& a, const TimetableRow& b) {
    return a.sequence < b.sequence;
  };
  std::stable_sort(rows.begin(), rows.end(), before);
  const auto same = [](const TimetableRow& a, const TimetableRow& b) {
    return a.sequence == b.sequence;
  };
  if (std::adjacent_find(rows.begin(), rows.end(), same) != rows.end()) {
    throw UnusableTrip("two calls with the same stop_sequence");
  }
}

bool has_time(const TimetableRow& row) { return row.arrival.has_value(); }

/// Blank times between two given ones, in equal steps.
void interpolate(std::vector<TimetableRow>& rows, Tally& adapted, std::string_view trip) {
  for (auto& row : rows) {
    if (!row.arrival) row.arrival = row.departure;
    if (!row.departure) row.departure = row.arrival;
  }
  if (!has_time(rows.front()) || !has_time(rows.back())) {
    throw UnusableTrip("no time at the first or the last call");
  }
  for (auto gap = rows.begin();
       (gap = std::find_if_not(gap, rows.end(), has_time)) != rows.end();) {
    const auto after = std::find_if(gap, rows.end(), has_time);
    const auto before = gap - 1;
    const auto steps = static_cast<std::int32_t>(after - before);
    for (std::int32_t i = 1; gap != after; ++gap, ++i) {
      gap->arrival = *before->departure + (*after->arrival - *before->departure) / steps * i;
      gap->departure = gap->arrival;
      adapted.add("calls without times, set between the times around them", trip);
    }
  }
}

void check_order(const std::vector<TimetableRow>& rows) {
  std::int32_t last = *rows.front().departure;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (*rows[i].arrival < last) throw UnusableTrip("times that run back on the way");
    last = *rows[i].arrival;
    if (i + 1 == rows.size()) break;
    if (*rows[i].departure < last) throw UnusableTrip("a departure before the arrival");
    last = *rows[i].departure;
  }
  if (last - *rows.front().departure > longest_run) throw UnusableTrip("a run beyond five days");
}

std::vector<Call> to_calls(const std::vector<TimetableRow>& rows, Tally& adapted,
                           std::string_view trip) {
  std::vector<Call> calls;
  for (const auto& row : rows) {
    const bool passes = row.nobody_boards_or_alights && row.arrival == row.departure;
    if (!calls.empty() && calls.back().station == row.station) {
      calls.back().departure = *row.departure;
      calls.back().passes = false;
      adapted.add("calls twice in a row at one station, joined", trip);
      continue;
    }
    calls.push_back({row.station, *row.arrival, *row.departure, passes, row.platform});
  }
  return calls;
}

std::vector<std::vector<Call>> split(std::vector<Call> calls, Tally& adapted,
                                     std::string_view trip) {
  std::vector<std::vector<Call>> parts(1);
  std::set<std::size_t> visited;
  for (auto& call : calls) {
    if (!visited.insert(call.station).second) {
      const Call turning = parts.back().back();
      parts.push_back({turning});
      visited = {turning.station, call.station};
      adapted.add("runs that come back to a station, cut in two trains before it", trip);
    }
    parts.back().push_back(std::move(call));
  }
  return parts;
}

/// Makes arrivals rise, gives stops of no length a dwell, and none to passes.
void settle_times(std::vector<Call>& calls, Tally& adapted, std::string_view trip) {
  calls.front().arrival = calls.front().departure;
  calls.front().passes = calls.back().passes = false;
  for (std::size_t i = 1; i < calls.size(); ++i) {
    auto& call = calls[i];
    const auto earliest = calls[i - 1].departure + 1;
    if (call.arrival < earliest) {
      adapted.add("arrivals at the time of the departure before, a second later", trip);
      call.arrival = earliest;
    }
    call.departure = std::max(call.departure, call.arrival);
    if (i + 1 == calls.size()) {
      call.departure = call.arrival;
    } else if (call.passes) {
      call.departure = call.arrival;
      adapted.add("calls where nobody boards or alights, taken as passes", trip);
    } else if (call.departure == call.arrival) {
      const auto room = calls[i + 1].arrival - call.arrival;
      call.departure += std::clamp(room / 2, 1, usual_dwell);
      adapted.add("stops of no length, given up to 30 seconds", trip);
    }
  }
}

}  // namespace

std::optional<std::int32_t> parse_time(std::string_view text) {
  constexpr std::array limits = {240, 59, 59};
  std::int32_t seconds = 0;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    const auto part = text.substr(0, text.find(':'));
    int value = 0;
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
    const bool whole = error == std::errc() && end == part.data() + part.size();
    if (!whole || value < 0 || value > limits[i]) return {};
    seconds = seconds * 60 + value;
    const bool last = i + 1 == limits.size();
    if (last != (part.size() == text.size())) return {};
    if (!last) text.remove_prefix(part.size() + 1);
  }
  return seconds;
}

std::vector<std::vector<Call>> make_runs(std::vector<TimetableRow> rows, Tally& adapted,
                                         std::string_view trip) {
  if (rows.empty()) throw UnusableTrip("no call at all");
  sort_rows(rows);
  interpolate(rows, adapted, trip);
  check_order(rows);
  auto calls = to_calls(rows, adapted, trip);
  if (calls.size() < 2) throw UnusableTrip("calls at one station only");
  auto parts = split(std::move(calls), adapted, trip);
  for (auto& part : parts) settle_times(part, adapted, trip);
  return parts;
}

std::size_t move_to_first_day(std::vector<Call>& calls) {
  const auto days = calls.front().departure / day_seconds;
  for (auto& call : calls) {
    call.arrival -= days * day_seconds;
    call.departure -= days * day_seconds;
  }
  return static_cast<std::size_t>(days);
}

}  // namespace ravelinox::host
