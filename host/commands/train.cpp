// ravelinox train: everything that the component knows of one train.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/attempt.hpp"
#include "host/commands/commands.hpp"
#include "host/refusal.hpp"
#include "host/text_table.hpp"
#include "host/timetable.hpp"

namespace ravelinox::host {
namespace {

struct TrainArguments {
  std::int32_t train = 0;
  std::string station = ".";
  std::string at;
};

std::string time_or_dash(const std::optional<Timestamp>& time) {
  return time ? show_time(*time) : "-";
}

void print_run(const std::vector<RunStop>& stops, Console& console) {
  std::vector<std::vector<std::string>> rows;
  rows.reserve(stops.size());
  for (const RunStop& stop : stops) {
    rows.push_back({stop.station, stop.track, time_or_dash(stop.scheduled_arrival),
                    time_or_dash(stop.expected_arrival), time_or_dash(stop.scheduled_departure),
                    time_or_dash(stop.expected_departure)});
  }
  console.out << '\n';
  for (const std::string& line : table_lines(
           {{"Station", 32}, {"Platform"}, {"Arrival"}, {"expected"}, {"Departure"}, {"expected"}},
           rows)) {
    console.out << "  " << line << '\n';
  }
}

void print_answers(StationSession& station, std::int32_t train, Timestamp moment,
                   Console& console) {
  cmdl1& component = station.component;
  Attempt attempt(component, console);
  const auto answer = [&](const std::string& label, const auto& question) {
    attempt(label, [&] { console.out << fit(label, 12) << joined(question()) << '\n'; });
  };
  answer("Run", [&] { return component.CorsaTreno(train); });
  answer("Delay", [&] { return component.RicavaRitardo(train, moment); });
  answer("News", [&] { return component.RicavaInfoCircolazione(train, moment); });
  answer("Position", [&] { return component.RicavaPosizioneTreno(train, moment); });
  answer("Next stops", [&] { return component.FermateSuccessive(train, station.name()); });
}

int show_train(const TrainArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  const Timestamp moment = question_moment(arguments.at, station);
  const std::vector<RunStop> stops = stops_of(station, arguments.train);
  if (stops.empty()) {
    throw Refusal("The timetable of " + station.name() + " has no train " +
                  std::to_string(arguments.train) + ".");
  }
  // Nothing was recorded in this process: what was expected up to now counts as done.
  station.component.StartTime = moment;
  console.out << "Train " << arguments.train << " at " << show_moment(moment) << '\n';
  print_answers(station, arguments.train, moment, console);
  print_run(stops, console);
  return 0;
}

}  // namespace

void add_train_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<TrainArguments>();
  CLI::App* command = program.add_subcommand(
      "train", "Tells a train's delay, run, position and next stops at a moment");
  command->add_option("NUMBER", arguments->train, "The train's number")->required();
  add_station_argument(*command, arguments->station);
  command->add_option("--at", arguments->at,
                      "Date and time [where the last run in the folder stands, else now]");
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return show_train(*arguments, console); };
  });
}

}  // namespace ravelinox::host
