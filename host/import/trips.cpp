// The trips at one station, from a feed that may hold a nation's: stop_times.txt is read twice, so
// that only the rows that matter are ever held.
#include "host/import/trips.hpp"

#include <charconv>
#include <unordered_set>

#include "host/import/category.hpp"
#include "host/import/csv.hpp"
#include "host/import/names.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

constexpr std::size_t rows_between_reports = 100'000;

struct Route {
  std::string short_name;
  std::string long_name;
  std::string undertaking;
  int type = 0;
};

std::optional<int> whole_number(const std::string& text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && end == text.data() + text.size() && value >= 0;
  return whole ? std::optional(value) : std::nullopt;
}

std::map<std::string, std::string> read_agencies(const Archive& archive) {
  std::map<std::string, std::string> agencies;
  if (!archive.has("agency.txt")) return agencies;
  FeedTable row(archive, "agency.txt", {"agency_name"});
  while (row.next()) agencies.emplace(row["agency_id"], undertaking_of(row["agency_name"]));
  return agencies;
}

/// A route without an agency belongs to the only one that there is.
std::string undertaking_in(const FeedTable& row, const std::map<std::string, std::string>& names) {
  const auto found = names.find(row["agency_id"]);
  if (found != names.end()) return found->second;
  return row["agency_id"].empty() && names.size() == 1 ? names.begin()->second : std::string();
}

std::map<std::string, Route> read_routes(const Archive& archive) {
  const auto agencies = read_agencies(archive);
  std::map<std::string, Route> routes;
  FeedTable row(archive, "routes.txt", {"route_id", "route_type"});
  while (row.next()) {
    const auto type = whole_number(row["route_type"]);
    if (!type) {
      throw Refusal(row.place("route_type") +
                    ": not a route type; it is a whole number, 2 for a railway.");
    }
    routes.emplace(row["route_id"], Route{row["route_short_name"], row["route_long_name"],
                                          undertaking_in(row, agencies), *type});
  }
  return routes;
}

class Reporter {
 public:
  Reporter(const ImportProgress& progress, std::string_view step)
      : progress_(progress), step_(step) {}

  void row() {
    if (++rows_ % rows_between_reports == 0 && progress_) progress_(step_, rows_);
  }

 private:
  const ImportProgress& progress_;
  std::string_view step_;
  std::size_t rows_ = 0;
};

std::optional<std::int32_t> time_in(const FeedTable& row, std::string_view column) {
  if (row[column].empty()) return {};
  if (const auto time = parse_time(row[column])) return time;
  throw UnusableTrip("a time that is none: " + row.place(column));
}

TimetableRow timetable_row(const FeedTable& row, const Stations& stations) {
  const auto stop = stations.stops.find(row["stop_id"]);
  if (stop == stations.stops.end()) {
    throw UnusableTrip("a stop that stops.txt does not have: " + row.place("stop_id"));
  }
  const auto sequence = whole_number(row["stop_sequence"]);
  if (!sequence) throw UnusableTrip("no whole number: " + row.place("stop_sequence"));
  return {*sequence,
          stop->second.station,
          time_in(row, "arrival_time"),
          time_in(row, "departure_time"),
          row["pickup_type"] == "1" && row["drop_off_type"] == "1",
          stop->second.platform};
}

/// "reason: place" becomes the reason, which is counted, and the place of its first case.
void drop(Tally& dropped, const std::string& reason) {
  const auto colon = reason.find(": ");
  if (colon == std::string::npos) return dropped.add(reason);
  dropped.add(reason.substr(0, colon), reason.substr(colon + 2));
}

}  // namespace

std::set<std::string> trips_at(const Archive& archive, const Stations& stations,
                               std::size_t station, const ImportProgress& progress) {
  std::set<std::string> trips;
  FeedTable row(archive, "stop_times.txt",
                {"trip_id", "stop_id", "stop_sequence", "arrival_time", "departure_time"});
  for (Reporter report(progress, "Looking for the station's trains"); row.next(); report.row()) {
    const auto stop = stations.stops.find(row["stop_id"]);
    if (stop != stations.stops.end() && stop->second.station == station) {
      trips.insert(row["trip_id"]);
    }
  }
  return trips;
}

Trips read_trips(const Archive& archive, const std::set<std::string>& at, Tally& dropped) {
  const auto routes = read_routes(archive);
  Trips trips;
  std::unordered_set<std::string> found;
  FeedTable row(archive, "trips.txt", {"route_id", "service_id", "trip_id"});
  while (row.next()) {
    const auto& id = row["trip_id"];
    const bool calls = at.contains(id);
    if (!found.insert(id).second) {
      throw Refusal(row.place("trip_id") + ": a second trip with this id; each needs its own.");
    }
    const auto route = routes.find(row["route_id"]);
    if (route == routes.end()) {
      if (calls) dropped.add("a route that routes.txt does not have", row.place("route_id"));
      continue;
    }
    if (!is_railway(route->second.type)) {
      if (calls) dropped.add("a tram, a bus or a ship", "trip " + id);
      continue;
    }
    trips.names.push_back({id, row["trip_short_name"]});
    if (!calls) continue;
    const auto& [short_name, long_name, undertaking, type] = route->second;
    const auto& category = category_of({row["trip_short_name"], short_name, long_name, type});
    trips.calling.emplace(
        id, Trip{id, row["service_id"], &category, undertaking, row["trip_short_name"]});
  }
  for (const auto& id : at) {
    if (!found.contains(id)) dropped.add("a trip that trips.txt does not have", "trip " + id);
  }
  return trips;
}

std::map<std::string, std::vector<TimetableRow>> read_rows(const Archive& archive,
                                                           const Stations& stations, Trips& trips,
                                                           Tally& dropped,
                                                           const ImportProgress& progress) {
  std::map<std::string, std::vector<TimetableRow>> rows;
  FeedTable row(archive, "stop_times.txt", {"trip_id"});
  for (Reporter report(progress, "Reading their timetable"); row.next(); report.row()) {
    const auto trip = trips.calling.find(row["trip_id"]);
    if (trip == trips.calling.end()) continue;
    try {
      rows[trip->first].push_back(timetable_row(row, stations));
    } catch (const UnusableTrip& unusable) {
      drop(dropped, unusable.what());
      rows.erase(trip->first);
      trips.calling.erase(trip);
    }
  }
  return rows;
}

}  // namespace ravelinox::host
