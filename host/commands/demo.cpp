// ravelinox demo: a morning at the bundled station, in a folder of its own, that checks itself.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "host/bundled_station.hpp"
#include "host/commands/commands.hpp"
#include "host/commands/day_arguments.hpp"
#include "host/import/import.hpp"
#include "host/interrupt.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* morning = "2026-04-22 06:00";
constexpr Timestamp length = 3 * hour;
constexpr double speed_for_watching = 300;
constexpr std::uint32_t default_seed = 8;  // of a day with a little of everything

constexpr const char* footer =
    "On a terminal or a desktop it takes some forty seconds, elsewhere one; --speed overrules\n"
    "that. Messages and announcements are shown as text. On a desktop the telephone's window\n"
    "opens too and announcements are spoken, unless --speed is max. What is shown as text is\n"
    "the same everywhere.";

struct DemoArguments : DayArguments {
  std::string folder;
};

/// A new folder under the temporary one; the number keeps one demo from another's files.
fs::path fresh_folder() {
  std::string pattern = (fs::temp_directory_path() / "ravelinox-demo-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw Refusal("No folder can be made in " + fs::temp_directory_path().string() + ".");
  }
  return pattern;
}

fs::path working_folder(const std::string& typed) {
  if (typed.empty()) return fresh_folder();
  make_folder(typed);
  if (!fs::is_empty(typed)) {
    throw Refusal("The folder " + typed + " is not empty; name another one for the demo's files.");
  }
  return typed;
}

/// The station is imported anew for every demo: a simulation changes its databases.
void import_bundled_station(const fs::path& folder) {
  ImportOptions options;
  options.feed = bundled_station() / "gtfs";
  options.station = "Empoli";
  options.out = folder;
  options.on_demand = 20;
  ImportSummary summary;
  import_feed(options, {}, summary);
}

int judge(const DaySummary& summary, Console& console) {
  if (summary.interrupted) return interrupted_exit_code;
  const std::vector<std::string> reasons = dull_reasons(summary);
  for (const std::string& reason : reasons) {
    console.err << "A dull day: " << reason << std::endl;
  }
  return reasons.empty() ? 0 : 1;
}

int demo(const DemoArguments& arguments, Console& console) {
  const fs::path folder = working_folder(arguments.folder);
  import_bundled_station(folder);
  console.out << "The demo's files are in " << fs::absolute(folder).string() << '\n';
  // Lines are for reading afterwards; a live page, a window and a voice for somebody who is there.
  const double speed = console.terminal || console.desktop ? speed_for_watching : 0;
  const DayOptions options =
      arguments.resolve({parse_moment(morning), length, speed, console.desktop});
  return judge(run_day(folder / station_file_name, options, console), console);
}

}  // namespace

void add_demo_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<DemoArguments>();
  arguments->options.suppression = 25;
  arguments->options.punctuality = 180;
  arguments->options.track_changes = {"18260@3"};
  arguments->seed = default_seed;
  CLI::App* command = program.add_subcommand(
      "demo", "Shows a morning at the bundled station of Empoli and ends by itself");
  command->add_option("--folder", arguments->folder,
                      "An empty or new folder for its files [one under the temporary folder]");
  add_day_options(*command, *arguments);
  command->footer("The demo checks itself: it fails when its day was dull. Its seed is " +
                  std::to_string(default_seed) + ".\n\n" + footer);
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return demo(*arguments, console); };
  });
}

}  // namespace ravelinox::host
