// What several commands share.
#include <CLI/CLI.hpp>
#include <system_error>

#include "host/commands/commands.hpp"
#include "host/day.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {

void add_station_argument(CLI::App& command, std::string& station) {
  command.add_option("STATION", station, "The station's folder, or its station database")
      ->capture_default_str();
}

void make_folder(const std::filesystem::path& folder) {
  std::error_code problem;
  std::filesystem::create_directories(folder, problem);
  if (problem) {
    throw Refusal("The folder " + folder.string() + " cannot be made: " + problem.message() + ".");
  }
}

Timestamp question_moment(const std::string& typed, const StationSession& station) {
  if (!typed.empty()) return parse_moment(typed);
  return moment_reached(station.folder()).value_or(local_now());
}

}  // namespace ravelinox::host
