// ravelinox board: who comes and who goes.
#include "host/board.hpp"

#include <CLI/CLI.hpp>
#include <memory>

#include "host/commands/commands.hpp"
#include "host/track_changes.hpp"

namespace ravelinox::host {
namespace {

struct BoardArguments {
  std::string station = ".";
  std::string at;
  std::vector<std::string> track_changes;
  int hours = 2;
  std::size_t trains = 20;
};

void print_side(const Board& board, Event side, std::size_t limit, Console& console) {
  console.out << (side == Event::arrival ? "\nARRIVALS\n" : "\nDEPARTURES\n");
  for (const std::string& line : board_lines(board, side, limit)) {
    console.out << "  " << line << '\n';
  }
}

int show_board(const BoardArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  station.component.AutAsModificheBin = track_change_list(arguments.track_changes);
  const Timestamp moment = question_moment(arguments.at, station);
  Attempt attempt(station.component, console);
  const Board board =
      BoardReader(station, attempt).read(moment, arguments.hours * hour, by_expectation(moment));
  console.out << station.name() << "   " << show_moment(moment) << '\n';
  for (const Event side : {Event::departure, Event::arrival}) {
    print_side(board, side, arguments.trains, console);
  }
  if (board.arrivals.empty() && board.departures.empty()) {
    console.out
        << "\nIf trains should run at this moment, prepare its day with \"ravelinox run\".\n";
  }
  return 0;
}

}  // namespace

void add_board_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<BoardArguments>();
  CLI::App* command =
      program.add_subcommand("board", "Shows a station's arrivals and departures at a moment");
  add_station_argument(*command, arguments->station);
  command->add_option("--at", arguments->at,
                      "Date and time [where the last run in the folder stands, else now]");
  command->add_option("--hours", arguments->hours, "How far the board looks ahead")
      ->check(CLI::Range(1, 24))
      ->capture_default_str();
  command->add_option("--trains", arguments->trains, "At most so many trains on each side")
      ->capture_default_str();
  command
      ->add_option("--platform", arguments->track_changes,
                   "Changes a train's platform, as 2345@3; may be given several times")
      ->take_all()
      ->allow_extra_args(false);
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return show_board(*arguments, console); };
  });
}

}  // namespace ravelinox::host
