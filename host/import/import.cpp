// From a public timetable to a station that can be played.
#include "host/import/import.hpp"

#include <algorithm>
#include <set>

#include "host/import/csv.hpp"
#include "host/import/names.hpp"
#include "host/import/output.hpp"
#include "host/import/tracks.hpp"
#include "host/import/trains.hpp"
#include "host/refusal.hpp"
#include "host/station_session.hpp"

namespace ravelinox::host {
namespace {

std::string publisher(const Archive& archive) {
  if (!archive.has("feed_info.txt")) return {};
  FeedTable row(archive, "feed_info.txt", {});
  return row.next() ? clean_name(row["feed_publisher_name"]) : std::string();
}

std::set<std::string> services_of(const Trips& trips) {
  std::set<std::string> services;
  for (const auto& [id, trip] : trips.calling) services.insert(trip.service);
  return services;
}

std::vector<std::size_t> stations_of(const std::vector<Train>& trains) {
  std::set<std::size_t> used;
  for (const auto& train : trains) {
    for (const auto& call : train.calls) used.insert(call.station);
  }
  return {used.begin(), used.end()};
}

void note_file(const Archive& archive, const std::string& file, const std::string& what,
               ImportSummary& summary) {
  if (archive.has(file)) summary.notes.push_back(file + " is not read: " + what);
}

void count_days(const Timetable& timetable, ImportSummary& summary) {
  const auto& calendar = timetable.calendar;
  std::vector<std::size_t> trains(DaySet().size());
  for (const auto& train : timetable.trains) {
    for (std::size_t i = 0; i < trains.size() && !train.on_demand; ++i) trains[i] += train.days[i];
  }
  const auto busiest = std::max_element(trains.begin(), trains.end());
  summary.busiest_trains = *busiest;
  summary.busiest_day = show_day(calendar.first + std::chrono::days(busiest - trains.begin()));
  summary.first_day = show_day(calendar.first);
  summary.last_day = show_day(calendar.last);
}

void count_all(const Timetable& timetable, const Network& network, ImportSummary& summary) {
  count_days(timetable, summary);
  summary.station = timetable.stations[timetable.own].name;
  summary.trains = timetable.trains.size();
  for (const auto& train : timetable.trains) summary.calls += train.calls.size();
  summary.stations = network.accesses().size();
  summary.sections = network.sections().size();
  summary.tracks = timetable.tracks.size();
}

}  // namespace

Timetable read_timetable(const Archive& archive, const ImportOptions& options,
                         const ImportProgress& progress, ImportSummary& summary) {
  Timetable timetable;
  auto& stations = timetable.stations = read_stations(archive);
  timetable.own = find_station(stations, options.station);
  timetable.source = publisher(archive);
  const auto at = trips_at(archive, stations, timetable.own, progress);
  summary.trips = at.size();
  auto trips = read_trips(archive, at, summary.dropped);
  const auto rows = read_rows(archive, stations, trips, summary.dropped, progress);
  const auto nothing = [&](const std::string& why) {
    throw Refusal("No train calls at " + stations[timetable.own].name + why + ".\n" +
                  summary.dropped.text());
  };
  if (trips.calling.empty()) nothing(" in this feed");
  timetable.calendar = read_calendar(archive, services_of(trips), options.window);
  TrainNumbers numbers(std::move(trips.names));
  timetable.trains = make_trains(trips, rows, timetable.calendar, numbers, summary);
  if (timetable.trains.empty()) nothing(" on the dates asked for");
  add_trains_on_demand(timetable.trains, options.on_demand, timetable.own, numbers, summary);
  if (const auto renamed = name_apart(stations, stations_of(timetable.trains)); renamed != 0) {
    summary.notes.push_back(std::to_string(renamed) +
                            " stations share the name of another place and carry a count.");
  }
  timetable.tracks = allot_tracks(timetable.trains, timetable.own, summary.adapted);
  note_file(archive, "frequencies.txt", "its trips run once, at the times of stop_times.txt.",
            summary);
  return timetable;
}

void import_feed(const ImportOptions& options, const ImportProgress& progress,
                 ImportSummary& summary) {
  Output output(options.out, options.force);
  const auto timetable = read_timetable(*open_archive(options.feed), options, progress, summary);
  const Network network(timetable.trains, timetable.stations);
  count_all(timetable, network, summary);
  if (progress) progress("Writing the databases", summary.calls);
  output.write(station_rows(timetable, network, std::string(line_file_name)),
               {train_rows(timetable), line_rows(timetable, network)});
  summary.station_database = output.station_database();
  summary.line_database = output.line_database();
}

}  // namespace ravelinox::host
