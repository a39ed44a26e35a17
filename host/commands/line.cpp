// ravelinox next and precedence: what is asked about trains between stations.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/commands/commands.hpp"

namespace ravelinox::host {
namespace {

struct NextArguments {
  std::string neighbour;
  std::string station = ".";
  std::string at;
  std::int32_t passed_over = 0;
};

int show_next(const NextArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  const Timestamp moment = question_moment(arguments.at, station);
  const std::string answer = to_text(station.component.ProssimoArrivo(
      station.name(), arguments.neighbour, moment, arguments.passed_over));
  const std::size_t bar = answer.find('|');
  const std::string train = answer.substr(bar + 1);
  if (train == "0") {
    console.out << "No train comes from " << arguments.neighbour << " after " << show_moment(moment)
                << '\n';
  } else {
    console.out << "Train " << train << " comes from " << arguments.neighbour << " in "
                << answer.substr(0, bar) << " seconds\n";
  }
  return 0;
}

struct PrecedenceArguments {
  std::int32_t first = 0;
  std::int32_t second = 0;
  std::string station = ".";
};

int show_precedence(const PrecedenceArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  const bool second_first =
      station.component.AnalisiPrecedenza(arguments.first, arguments.second, station.name());
  console.out << "Behind " << station.name() << ", train " << arguments.first
              << (second_first ? " loses time, and train " : " keeps its time, or train ")
              << arguments.second << (second_first ? " no more than it" : " loses more") << '\n';
  return 0;
}

}  // namespace

void add_next_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<NextArguments>();
  CLI::App* command =
      program.add_subcommand("next", "Tells which train comes next from a neighbouring station");
  command->add_option("NEIGHBOUR", arguments->neighbour, "The neighbouring station")->required();
  add_station_argument(*command, arguments->station);
  command->add_option("--at", arguments->at,
                      "Date and time [where the last run in the folder stands, else now]");
  command->add_option("--after", arguments->passed_over, "A train to pass over");
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return show_next(*arguments, console); };
  });
}

void add_precedence_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<PrecedenceArguments>();
  CLI::App* command = program.add_subcommand(
      "precedence", "Compares how two trains gain or lose time behind the station");
  command->add_option("FIRST", arguments->first, "A train's number")->required();
  command->add_option("SECOND", arguments->second, "Another's")->required();
  add_station_argument(*command, arguments->station);
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return show_precedence(*arguments, console); };
  });
}

}  // namespace ravelinox::host
