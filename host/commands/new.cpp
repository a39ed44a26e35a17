// ravelinox new: an empty station for somebody to fill.
#include <CLI/CLI.hpp>
#include <array>
#include <filesystem>
#include <memory>

#include "host/commands/commands.hpp"
#include "ravelinox/database.hpp"

namespace ravelinox::host {
namespace {

struct NewArguments {
  std::string folder;
  std::string station;
  std::string tracks = "1,2,3";
};

void name_station(const std::string& database, const NewArguments& arguments) {
  RowWriter writer(database);
  const std::array<Variant, 6> properties{std::int32_t{1}, arguments.station, "", "",
                                          line_file_name,  arguments.tracks};
  writer.append("proprieta", properties);
  writer.commit();
}

/// Both databases, or neither.
void create_databases(const std::filesystem::path& folder) {
  create_station_database(component_path(folder / station_file_name));
  try {
    create_line_database(component_path(folder / line_file_name));
  } catch (const Error&) {
    std::filesystem::remove(folder / station_file_name);
    throw;
  }
}

int create(const NewArguments& arguments, Console& console) {
  const std::filesystem::path folder(arguments.folder);
  make_folder(folder);
  create_databases(folder);
  if (!arguments.station.empty()) {
    name_station(component_path(folder / station_file_name), arguments);
  }
  console.out << "Made " << (folder / station_file_name).string() << " and "
              << (folder / line_file_name).string() << ".\n";
  if (arguments.station.empty()) {
    console.out << "The station has no name yet: its table proprieta needs a row.\n";
  }
  return 0;
}

}  // namespace

void add_new_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<NewArguments>();
  CLI::App* command = program.add_subcommand(
      "new", "Makes an empty station database and line database with all their tables");
  command->add_option("FOLDER", arguments->folder, "Where to make them")->required();
  command->add_option("--station", arguments->station,
                      "The station's name, as the timetable will write it");
  command->add_option("--tracks", arguments->tracks, "The station's platforms")
      ->capture_default_str();
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return create(*arguments, console); };
  });
}

}  // namespace ravelinox::host
