// A feed cut down to one station: small enough to carry along with a program.
#include "host/import/extract.hpp"

#include <fstream>
#include <functional>
#include <set>

#include "host/import/csv.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

using Ids = std::set<std::string>;
using Keep = std::function<bool(const FeedTable&)>;

void write_record(std::ostream& out, const std::vector<std::string>& fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    out << (i == 0 ? "" : ",");
    if (fields[i].find_first_of(",\"\n\r") == std::string::npos) {
      out << fields[i];
      continue;
    }
    out << '"';
    for (const char c : fields[i]) out << (c == '"' ? "\"\"" : std::string(1, c));
    out << '"';
  }
  out << '\n';
}

class Extract {
 public:
  Extract(const Archive& archive, const ImportOptions& options)
      : archive_(archive), folder_(options.out), force_(options.force) {
    std::filesystem::create_directories(folder_);
  }

  void copy(const std::string& file, const Keep& keep) const {
    if (!archive_.has(file)) return;
    const auto path = folder_ / file;
    if (!force_ && std::filesystem::exists(path)) {
      throw Refusal("The file " + path.string() + " is there already: choose another folder.");
    }
    std::ofstream out(path, std::ios::binary);
    FeedTable row(archive_, file, {});
    write_record(out, row.header());
    while (row.next()) {
      if (keep(row)) write_record(out, row.fields());
    }
    if (!out.flush()) throw Refusal("The file " + path.string() + " cannot be written.");
  }

 private:
  const Archive& archive_;
  std::filesystem::path folder_;
  bool force_;
};

/// Keeps rows whose field is among the ids, and notes what a kept row refers to.
Keep among(std::string column, const Ids& ids, std::map<std::string, Ids*> notes = {}) {
  return [column = std::move(column), &ids, notes = std::move(notes)](const FeedTable& row) {
    if (!ids.contains(row[column])) return false;
    for (const auto& [reference, noted] : notes) noted->insert(row[reference]);
    return true;
  };
}

/// Stops with the stations that they belong to.
void add_parents(const Archive& archive, Ids& stops) {
  std::map<std::string, std::string> parents;
  for (FeedTable row(archive, "stops.txt", {}); row.next();) {
    parents[row["stop_id"]] = row["parent_station"];
  }
  for (const auto& stop : Ids(stops)) {
    for (auto id = parents[stop]; !id.empty() && stops.insert(id).second;) id = parents[id];
  }
}

}  // namespace

void extract_feed(const ImportOptions& options, const ImportProgress& progress) {
  const auto archive = open_archive(options.feed);
  const auto stations = read_stations(*archive);
  const auto own = find_station(stations, options.station);
  Tally dropped;
  Ids trips;
  for (const auto& [id, trip] :
       read_trips(*archive, trips_at(*archive, stations, own, progress), dropped).calling) {
    trips.insert(id);
  }
  const Extract extract(*archive, options);
  Ids routes, services, stops, agencies;
  extract.copy("trips.txt",
               among("trip_id", trips, {{"route_id", &routes}, {"service_id", &services}}));
  extract.copy("stop_times.txt", among("trip_id", trips, {{"stop_id", &stops}}));
  extract.copy("routes.txt", among("route_id", routes, {{"agency_id", &agencies}}));
  extract.copy("agency.txt", [&](const FeedTable& row) {
    return agencies.contains(row["agency_id"]) || agencies.contains("");
  });
  extract.copy("calendar.txt", among("service_id", services));
  extract.copy("calendar_dates.txt", among("service_id", services));
  extract.copy("feed_info.txt", [](const FeedTable&) { return true; });
  add_parents(*archive, stops);
  extract.copy("stops.txt", among("stop_id", stops));
}

}  // namespace ravelinox::host
