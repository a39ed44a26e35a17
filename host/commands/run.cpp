// ravelinox run: a station lives.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/commands/commands.hpp"
#include "host/commands/day_arguments.hpp"
#include "host/interrupt.hpp"

namespace ravelinox::host {
namespace {

struct RunArguments : DayArguments {
  std::string station = ".";
};

constexpr const char* footer =
    "A simulated minute passes in a second unless --speed says otherwise. Without\n"
    "--seed every run is different.\n"
    "\n"
    "Messages and announcements are shown as text. On a desktop (DISPLAY or WAYLAND_DISPLAY\n"
    "names one) the telephone's window opens too and announcements are spoken, unless time\n"
    "runs as fast as possible. One is spoken at a time; what falls due meanwhile is shown only.\n"
    "\n"
    "The station's databases are changed in place: other programs, such as \"ravelinox board\",\n"
    "see every movement as it happens. Output.ssi and the log lie beside them. Ctrl-C ends the\n"
    "run; nothing is lost.";

int run(const RunArguments& arguments, Console& console) {
  const std::filesystem::path database = find_station_database(arguments.station);
  const Timestamp now = local_now();
  const DayOptions options =
      arguments.resolve({.start = now - now % minute, .desktop = console.desktop});
  const DaySummary summary = run_day(database, options, console);
  return summary.interrupted ? interrupted_exit_code : 0;
}

}  // namespace

void add_run_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<RunArguments>();
  CLI::App* command = program.add_subcommand(
      "run", "Prepares a station's day and lets it live: trains move, boards change");
  add_station_argument(*command, arguments->station);
  command->add_option("--start", arguments->start,
                      "Date and time at which the simulation starts [now]");
  command->add_option("--end", arguments->end,
                      "Date and time, or time of day, at which it ends [24 hours later]");
  add_day_options(*command, *arguments);
  command->footer(footer);
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return run(*arguments, console); };
  });
}

}  // namespace ravelinox::host
