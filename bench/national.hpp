// A generated national timetable: many trains of twenty stations each, in databases of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "ravelinox/cmdl1.hpp"

namespace ravelinox::bench {

inline constexpr int stations_per_train = 20;

/// Every run goes through the own station, which is the tenth of its twenty.
inline constexpr const char* own_station = "Centrale";
inline constexpr const char* neighbour_before = "Vicina";

/// The start of the simulated day: Wednesday, 22 April 2026, 3:00, before all departures.
[[nodiscard]] std::int32_t start_of_day();
inline constexpr std::int32_t seconds_before_start = 3 * 3600;

/// A station with a timetable in a folder that lives as long as the object.
class National {
 public:
  explicit National(int trains);
  National(const National&) = delete;
  National& operator=(const National&) = delete;
  ~National();

  /// Puts the line database back to what it was at first. Nobody may have it open.
  void restore() const;

  [[nodiscard]] std::string line_file() const { return (folder_ / "line.db").string(); }

  /// An engine with both sessions open, one train in 1000 suppressed, hardly a deviation.
  void open(cmdl1& engine) const;

 private:
  std::filesystem::path folder_;
};

}  // namespace ravelinox::bench
