// ravelinox announce: one announcement, shown and spoken.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/attempt.hpp"
#include "host/commands/commands.hpp"
#include "host/loudspeaker.hpp"

namespace ravelinox::host {
namespace {

struct AnnounceArguments {
  std::string procedure;
  std::int32_t train = 0;
  std::string station = ".";
  std::string at, track, instead_of, name;
};

constexpr const char* footer =
    "PROCEDURE is one of\n"
    "  Arrivo, Partenza, Pronto, Ritardo         about TRAIN; Ritardo only when it is late\n"
    "  \"Cambio binario\"                          about TRAIN, with --track and --instead-of\n"
    "  Transito                                  with --track\n"
    "  Stazione                                  with --name\n"
    "  \"Comunicazioni generali\"                  one of three, by chance\n"
    "TRAIN is 0 where none is needed. The sentence is shown, and spoken by the desktop's speech\n"
    "service if there is one.";

struct Parameters {
  Variant first = Variant::missing();
  Variant second = Variant::missing();
};

Parameters parameters_for(const AnnounceArguments& typed, const StationSession& station,
                          Timestamp moment) {
  if (typed.procedure == "Arrivo" || typed.procedure == "Ritardo") return {moment};
  if (typed.procedure == "Transito") return {typed.track};
  if (typed.procedure == "Stazione") return {typed.name.empty() ? station.name() : typed.name};
  if (typed.procedure != "Cambio binario") return {};
  return {typed.track, typed.instead_of.empty() ? Variant::null() : Variant(typed.instead_of)};
}

int announce(const AnnounceArguments& arguments, Console& console) {
  StationSession station(find_station_database(arguments.station));
  const Timestamp moment = question_moment(arguments.at, station);
  // Nothing was recorded in this process: what was expected up to now counts as done.
  station.component.StartTime = moment;
  Loudspeaker loudspeaker(platform().voice);
  bool said = false;
  Platform shown = platform();
  shown.voice = voice_to([&](const std::string& text) {
    said = true;
    console.out << text << std::endl;
    loudspeaker.say(text);
  });
  const PlatformOverride surroundings(std::move(shown));
  const auto [first, second] = parameters_for(arguments, station, moment);
  station.component.AutAsSintesiVocale(arguments.train, arguments.procedure, first, second);
  if (!said) console.out << "There is nothing to announce." << std::endl;
  if (const std::string& failure = loudspeaker.failure(); !failure.empty()) {
    console.err << "It was shown, not spoken: " << failure << std::endl;
  }
  return 0;
}

}  // namespace

void add_announce_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<AnnounceArguments>();
  CLI::App* command =
      program.add_subcommand("announce", "Shows and speaks an announcement to passengers");
  command->add_option("TRAIN", arguments->train, "The train's number")->required();
  command->add_option("PROCEDURE", arguments->procedure, "What to announce")
      ->required()
      ->transform(CLI::IsMember({"Arrivo", "Partenza", "Pronto", "Ritardo", "Cambio binario",
                                 "Transito", "Stazione", "Comunicazioni generali"},
                                CLI::ignore_case));
  add_station_argument(*command, arguments->station);
  command->add_option("--at", arguments->at,
                      "Date and time [where the last run in the folder stands, else now]");
  command->add_option("--track", arguments->track, "The platform's track");
  command->add_option("--instead-of", arguments->instead_of, "The track before the change");
  command->add_option("--name", arguments->name, "The station to name [the station itself]");
  command->footer(footer);
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return announce(*arguments, console); };
  });
}

}  // namespace ravelinox::host
