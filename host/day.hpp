#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/console.hpp"
#include "host/summary.hpp"

namespace ravelinox::host {

/// What a simulated day is made of; the help of `run` explains each of them.
struct DayOptions {
  Timestamp start = 0;
  Timestamp end = day;             ///< at most 24 hours after `start`
  double speed = 60;               ///< simulated seconds in a real one; 0: no pacing
  std::int16_t punctuality = 120;  ///< seconds, for `Global_Puntualita`
  std::int16_t suppression = 100;  ///< one train in so many is suppressed
  std::int16_t wear = 100;         ///< how fast equipment wears, for `Global_ProbabilitaGuasti`
  std::int32_t deviation = 15;     ///< seconds, of the world's own
  std::uint32_t seed = 0;          ///< the same seed gives the same day
  bool speak = false;              ///< announcements, by the desktop's speech service
  bool window = false;             ///< dispatchers' messages, in the telephone's window too
  std::vector<std::string> track_changes;  ///< "2345@3"
};

/// Prepares the day and lives it until its end or an interruption, and prints its summary. Shows
/// it on the console. "Output.ssi" and the log come to lie beside the databases. Refuses when no
/// train runs in the time asked for.
DaySummary run_day(const std::filesystem::path& database, const DayOptions& options,
                   Console& console);

/// The simulated moment that a run in this folder has reached, also while it still goes on.
[[nodiscard]] std::optional<Timestamp> moment_reached(const std::filesystem::path& folder);

}  // namespace ravelinox::host
