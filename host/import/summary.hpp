#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ravelinox::host {

/// What happened how often, with the first example of each.
class Tally {
 public:
  void add(const std::string& what, std::string_view example = {});
  [[nodiscard]] std::size_t total() const;
  [[nodiscard]] bool empty() const { return entries_.empty(); }
  /// A line for each, the most frequent first: "  12  trips without times (first: trip 77)".
  [[nodiscard]] std::string text() const;

 private:
  struct Entry {
    std::size_t count = 0;
    std::string example;
  };
  std::map<std::string, Entry> entries_;
};

/// What an import read, made, changed and left out, and why.
struct ImportSummary {
  std::string station;           ///< as it stands in the databases: the own station's name
  std::string station_database;  ///< paths of the files that were made
  std::string line_database;
  std::string first_day;  ///< "2026-01-15", the first day on which a train runs
  std::string last_day;
  std::string busiest_day;  ///< the day with the most trains, good for a first session
  std::size_t busiest_trains = 0;
  std::size_t trips = 0;           ///< trips of the feed that call at the station
  std::size_t trains = 0;          ///< trains in the line database
  std::size_t calls = 0;           ///< rows of the timetable
  std::size_t stations = 0;        ///< stations on the trains' runs
  std::size_t sections = 0;        ///< line sections between neighbours
  std::size_t tracks = 0;          ///< platform tracks of the own station
  Tally dropped;                   ///< trips left out
  Tally adapted;                   ///< what was filled in or changed
  std::vector<std::string> notes;  ///< what else is worth knowing

  /// The whole as text for a terminal.
  [[nodiscard]] std::string text() const;
};

}  // namespace ravelinox::host
