#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/civil_time.hpp"
#include "host/console.hpp"
#include "host/station_session.hpp"

namespace CLI {
class App;
}

namespace ravelinox::host {

/// What the chosen command does once the whole command line has been understood; its result is
/// the program's exit code.
using Action = std::function<int(Console&)>;

// Each adds one command to the program; the command sets `chosen` when it was typed.
void add_demo_command(CLI::App& program, Action& chosen);
void add_run_command(CLI::App& program, Action& chosen);
void add_board_command(CLI::App& program, Action& chosen);
void add_train_command(CLI::App& program, Action& chosen);
void add_announce_command(CLI::App& program, Action& chosen);
void add_signal_command(CLI::App& program, Action& chosen);
void add_consent_command(CLI::App& program, Action& chosen);
void add_next_command(CLI::App& program, Action& chosen);
void add_precedence_command(CLI::App& program, Action& chosen);
void add_maintenance_command(CLI::App& program, Action& chosen);
void add_check_command(CLI::App& program, Action& chosen);
void add_import_command(CLI::App& program, Action& chosen);
void add_new_command(CLI::App& program, Action& chosen);

/// Adds the positional STATION, the current folder when it is left out.
void add_station_argument(CLI::App& command, std::string& station);

/// Makes the folder and those above it; refuses when it cannot be.
void make_folder(const std::filesystem::path& folder);

/// The moment that a question is about: as typed, else where the last run in the folder stands,
/// else the machine's clock.
[[nodiscard]] Timestamp question_moment(const std::string& typed, const StationSession& station);

}  // namespace ravelinox::host
