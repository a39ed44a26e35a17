// A station for a test: two databases in a folder of their own, made from a readable timetable, an
// engine with both sessions open, and everything the engine takes from its surroundings scripted.
#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ravelinox/cmdl1.hpp"
#include "ravelinox/database.hpp"
#include "ravelinox/platform.hpp"
#include "support/cases.hpp"
#include "support/scripted_random.hpp"

namespace ravelinox::testing {

/// A folder that lives as long as the object.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();
  [[nodiscard]] std::string file(std::string_view name) const { return (path_ / name).string(); }
  [[nodiscard]] std::string bytes(std::string_view name) const;  ///< of a file in it
  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// "h:mm[:ss]", with "d+" before it for whole days, as seconds; "-" is no time.
[[nodiscard]] std::int32_t at(std::string_view time);

/// What the operator saw: every message as "caller: text".
std::vector<std::string>& messages();

template <class... Cells>
void append(RowWriter& rows, std::string_view table, const Cells&... cells) {
  rows.append(table, std::array{Variant(cells)...});
}

/// Adds a row to a table of a database.
template <class... Cells>
void append(const std::string& file, std::string_view table, const Cells&... cells) {
  RowWriter rows(file);
  append(rows, table, cells...);
  rows.commit();
}

/// Adds trains to a line database: each begins with its number, and the rows of its run follow.
/// A line's end or a ";" ends each.
///
///   2345 R ' 1 2 3 ' length=200 if=TI note=x
///     Firenze - 8:00; Empoli 8:25 8:27 dwell=30 recovery=60 track=3
///
/// A "_" in a station's name is a space. Expected times begin as the scheduled ones.
void add_timetable(const std::string& line_file, std::string_view timetable);

class Station {
 public:
  explicit Station(std::string_view timetable, std::string_view name = "Empoli");

  /// Replaces the draws to come.
  ScriptedRandom& script(std::vector<float> draws);

  /// A change made by another program, on a connection of its own that waits for no lock.
  void change(const std::string& line_statement) const;
  void change_station(const std::string& station_statement) const;

  /// What another program reads in the line database: cells joined by ", ", rows by " / ".
  [[nodiscard]] std::string query(const std::string& statement) const;
  /// The rows of a train as they stand now: "Empoli 8:25:00 8:27:00 expected 8:26:00 8:28:00".
  [[nodiscard]] std::vector<std::string> run(std::int32_t train) const;
  /// The train's "Posizione1, Posizione2, Stato, Velocita, Causa_ritardo".
  [[nodiscard]] std::string state(std::int32_t train) const;

  TemporaryFolder folder;
  std::string station_file = folder.file("station.db");
  std::string line_file = folder.file("line.db");
  PlatformOverride surroundings;
  cmdl1 engine;
};

}  // namespace ravelinox::testing
