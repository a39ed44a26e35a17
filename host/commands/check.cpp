// ravelinox check: is this file a station that can be used?
#include <CLI/CLI.hpp>
#include <memory>

#include "host/commands/commands.hpp"
#include "host/rows.hpp"

namespace ravelinox::host {
namespace {

int trains_in(StationSession& station) {
  int trains = 0;
  each_row(station.timetable(), "SELECT Numero FROM generalita_treni",
           [&](Recordset& rows) { trains = rows.record_count(); });
  return trains;
}

int check(const std::string& file, Console& console) {
  const std::uint8_t result = cmdl1().VerificaDB(component_path(file), Variant::missing());
  console.out << file << ' ' << reason_unusable(result) << '.' << std::endl;
  if (result != usable) return 1;
  // The tables are there; whether the station can be opened is the next question.
  StationSession station(file);
  console.out << "Its station is " << station.name() << "; its line has " << trains_in(station)
              << " trains." << std::endl;
  return 0;
}

}  // namespace

void add_check_command(CLI::App& program, Action& chosen) {
  const auto file = std::make_shared<std::string>();
  CLI::App* command = program.add_subcommand(
      "check", "Tells whether a file is a usable station database, and if not, what it lacks");
  command->add_option("FILE", *file, "The station database")->required();
  command->final_callback(
      [file, &chosen] { chosen = [file](Console& console) { return check(*file, console); }; });
}

}  // namespace ravelinox::host
