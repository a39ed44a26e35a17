// The command line: which command, and what becomes of failures.
#include "host/program.hpp"

#include <CLI/CLI.hpp>
#include <exception>

#include "host/attempt.hpp"
#include "host/commands/commands.hpp"
#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

constexpr int failed = 1;
constexpr int wrong_command_line = 2;

constexpr const char* description =
    "Ravelinox: a railway station's day, simulated.\n"
    "\n"
    "Start with \"ravelinox demo\". Then make a station of your own from a public timetable with\n"
    "\"ravelinox import\", let it live with \"ravelinox run\", and ask about it with \"ravelinox\n"
    "board\" and \"ravelinox train\", also while it runs.\n"
    "\n"
    "A STATION is the folder that import or new has made, or a station database in it; left out,\n"
    "it is the current folder. Moments are written as 2026-06-10 06:30.";

void add_commands(CLI::App& program, Action& chosen) {
  for (const auto add : {add_demo_command, add_run_command, add_board_command, add_train_command,
                         add_announce_command, add_signal_command, add_consent_command,
                         add_next_command, add_precedence_command, add_maintenance_command,
                         add_check_command, add_import_command, add_new_command}) {
    add(program, chosen);
  }
}

int perform(const Action& action, Console& console) {
  try {
    return action(console);
  } catch (const Refusal& refusal) {
    console.err << "ravelinox: " << refusal.what() << std::endl;
  } catch (const Error& error) {
    console.err << "ravelinox: " << describe(error) << std::endl;
  } catch (const std::exception& unexpected) {
    console.err << "ravelinox: " << unexpected.what() << std::endl;
  }
  return failed;
}

}  // namespace

int run_program(int argc, const char* const* argv, Console& console) {
  CLI::App program(description, "ravelinox");
  program.set_version_flag("--version", RAVELINOX_VERSION);
  program.require_subcommand(1);
  program.option_defaults()->take_last();  // so that an alias can be overruled
  Action chosen;
  add_commands(program, chosen);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    const int code = program.exit(problem, console.out, console.err);
    return code == 0 ? 0 : wrong_command_line;
  }
  return perform(chosen, console);
}

}  // namespace ravelinox::host
