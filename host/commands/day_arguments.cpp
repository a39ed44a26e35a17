// The options of a simulated day.
#include "host/commands/day_arguments.hpp"

#include <CLI/CLI.hpp>

#include "host/seeded_random.hpp"

namespace ravelinox::host {
namespace {

/// A flag and its opposite, the last of them holding. A plain flag would count, and start at 0:
/// then nothing typed could not be told from the opposite.
void add_switch(CLI::App& command, const std::string& names, std::optional<bool>& chosen,
                const std::string& description) {
  command
      .add_flag_function(
          names, [&chosen](std::int64_t on) { chosen = on > 0; }, description)
      ->take_last();
}

}  // namespace

DayOptions DayArguments::resolve(const DayDefaults& defaults) const {
  DayOptions resolved = options;
  resolved.start = start.empty() ? defaults.start : parse_moment(start);
  resolved.end =
      end.empty() ? resolved.start + defaults.length : parse_moment_after(end, resolved.start);
  resolved.speed = speed.value_or(defaults.speed);
  // A day that is over in a second leaves no time to read a window or to hear a sentence.
  const bool attended = defaults.desktop && resolved.speed > 0;
  resolved.speak = speak.value_or(attended);
  resolved.window = window.value_or(attended);
  resolved.seed = seed ? *seed : fresh_seed();
  return resolved;
}

void add_day_options(CLI::App& command, DayArguments& arguments) {
  DayOptions& options = arguments.options;
  command
      .add_option("--speed", arguments.speed,
                  "Simulated seconds in a real one: 1 is real time, 0 or \"max\" as fast as "
                  "possible")
      ->transform(CLI::Transformer({{"max", "0"}}, CLI::ignore_case))
      ->check(CLI::Range(0.0, 86400.0));
  command
      .add_option("--punctuality", options.punctuality,
                  "Spread, in seconds, by which each movement is expected to differ from the "
                  "timetable")
      ->check(CLI::Range(0, 32767))
      ->capture_default_str();
  command
      .add_option("--suppression", options.suppression,
                  "One train in so many is suppressed; 0 and 1 suppress all. Extraordinary "
                  "trains run as often")
      ->check(CLI::Range(0, 32767))
      ->capture_default_str();
  command
      .add_option(
          "--wear", options.wear,
          "How fast the points and track circuits of the trains' routes wear; 0 for not at all")
      ->check(CLI::Range(0, 32767))
      ->capture_default_str();
  command
      .add_option("--deviation", options.deviation,
                  "Spread, in seconds, by which trains really differ from what is expected")
      ->check(CLI::Range(0, 3600))
      ->capture_default_str();
  command
      .add_option("--platform", options.track_changes,
                  "Changes a train's platform, as 2345@3; may be given several times")
      ->take_all()
      ->allow_extra_args(false);
  add_switch(command, "--speak,!--silent", arguments.speak,
             "Speaks the announcements that it shows, or does not [on a desktop it does, unless "
             "time runs as fast as possible]");
  add_switch(command, "--window,!--no-window", arguments.window,
             "Shows the dispatchers' messages in the telephone's window too, or does not [as "
             "above]");
  command.add_option("--seed", arguments.seed,
                     "The same seed gives the same day; the one used is always printed");
}

}  // namespace ravelinox::host
