#pragma once

#include <cstdint>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "host/civil_time.hpp"

namespace ravelinox::host {

/// From how late on a train counts as late.
inline constexpr Timestamp late_from = 5 * minute;

/// What happened in a simulated day.
struct DaySummary {
  Timestamp reached = 0;  ///< the simulated moment at its end
  bool interrupted = false;
  int messages = 0;       ///< of dispatchers
  int suppressions = 0;   ///< of today's trains
  int extraordinary = 0;  ///< trains on demand that run today
  int announcements = 0;
  int arrivals = 0;  ///< at the own station, stopping trains
  int departures = 0;
  int passages = 0;                    ///< trains that went through the own station
  std::set<std::int32_t> late_trains;  ///< at the own station
  int recorded = 0;                    ///< movements at all stations
  int failures = 0;                    ///< calls that failed
  std::string not_spoken;              ///< why announcements were shown only; empty if all is well
  int information_trains = 0;          ///< in the station information file at the end
};

void print_summary(std::ostream& out, const DaySummary& summary);

/// How many trains a station information file describes; 0 when there is no such file.
[[nodiscard]] int count_information_trains(const std::filesystem::path& file);

/// Why a day shows too little of a station's life, one sentence each; none for a lively day.
[[nodiscard]] std::vector<std::string> dull_reasons(const DaySummary& summary);

}  // namespace ravelinox::host
