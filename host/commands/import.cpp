// ravelinox import: a station from a public timetable.
#include "host/import/import.hpp"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "host/commands/commands.hpp"
#include "host/pacing.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

struct ImportArguments {
  ImportOptions options;
  std::string from, to;
};

constexpr const char* footer =
    "The feed is a GTFS timetable, a zip file or a folder; it may hold a year at most, or --from\n"
    "and --to narrow it. All trains that call at the station are taken, with their whole runs.\n"
    "The summary tells what was left out and why.";

std::optional<std::chrono::sys_days> day_of(const std::string& typed) {
  if (typed.empty()) return std::nullopt;
  return std::chrono::sys_days(std::chrono::days(midnight_of(parse_moment(typed)) / day));
}

/// A line that is redrawn on a terminal, a few times a second; elsewhere nothing, since a log
/// that fills with progress is worth less than the summary at the end.
ImportProgress progress_line(Console& console) {
  if (!console.terminal) return {};
  const auto limit = std::make_shared<RealTimeLimit>(std::chrono::milliseconds(200));
  return [limit, &console](std::string_view step, std::size_t rows) {
    if (limit->due()) console.out << "\r" << step << ' ' << rows << "\x1b[K" << std::flush;
  };
}

int import_station(const ImportArguments& arguments, Console& console) {
  ImportOptions options = arguments.options;
  options.window = {day_of(arguments.from), day_of(arguments.to)};
  ImportSummary summary;
  import_feed(options, progress_line(console), summary);
  if (console.terminal) console.out << "\r\x1b[K";
  console.out << summary.text() << std::endl;
  return 0;
}

}  // namespace

void add_import_command(CLI::App& program, Action& chosen) {
  const auto arguments = std::make_shared<ImportArguments>();
  ImportOptions& options = arguments->options;
  CLI::App* command =
      program.add_subcommand("import", "Makes a station from a public timetable (GTFS)");
  command->add_option("FEED", options.feed, "The timetable: a zip file or a folder")->required();
  command->add_option("--station", options.station, "The station's name, or its stop's id")
      ->required();
  command->add_option("--out", options.out, "The folder for the databases")->required();
  command->add_option("--from", arguments->from, "First day to take, as 2026-06-10");
  command->add_option("--to", arguments->to, "Last day to take");
  command->add_option("--on-demand", options.on_demand,
                      "Adds so many invented trains that run on demand only");
  command->add_flag("--force", options.force, "Replaces databases that are there already");
  command->footer(footer);
  command->final_callback([arguments, &chosen] {
    chosen = [arguments](Console& console) { return import_station(*arguments, console); };
  });
}

}  // namespace ravelinox::host
