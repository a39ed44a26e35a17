#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/civil_time.hpp"
#include "host/station_session.hpp"

namespace ravelinox::host {

enum class Event : std::uint8_t { arrival, departure };

/// The word by which the component knows the event.
[[nodiscard]] const char* event_word(Event event);

/// One station of a train's run. Times that the run lacks (no arrival at the origin, no departure
/// at the terminus) are absent.
struct RunStop {
  std::string station;
  std::optional<Timestamp> scheduled_arrival, scheduled_departure;
  std::optional<Timestamp> expected_arrival, expected_departure;
  Timestamp dwell = 0;  ///< seconds that the train needs to stand at least
  std::string track;

  [[nodiscard]] const std::optional<Timestamp>& scheduled(Event event) const {
    return event == Event::arrival ? scheduled_arrival : scheduled_departure;
  }
  [[nodiscard]] const std::optional<Timestamp>& expected(Event event) const {
    return event == Event::arrival ? expected_arrival : expected_departure;
  }
  /// The train runs through without standing.
  [[nodiscard]] bool passes() const {
    return scheduled_arrival && scheduled_departure && *scheduled_arrival == *scheduled_departure;
  }
};

struct Run {
  std::int32_t train = 0;
  std::vector<RunStop> stops;  ///< from origin to terminus
};

/// The runs of all trains that come through the station, in the order of their numbers.
[[nodiscard]] std::vector<Run> runs_through(StationSession& station);

/// One train's run as it stands now; empty for an unknown train.
[[nodiscard]] std::vector<RunStop> stops_of(StationSession& station, std::int32_t train);

}  // namespace ravelinox::host
