#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/attempt.hpp"
#include "host/station_session.hpp"
#include "host/traffic.hpp"

namespace ravelinox::host {

/// One of the station's routes, between a neighbour and a platform track.
struct Route {
  std::string name;
  Event event = Event::arrival;  ///< which movement it is for
  std::string neighbour;
  std::string track;
  std::string signal;                ///< its origin signal
  std::vector<std::int16_t> points;  ///< the numbers of the points that it sets
};

/// The signal box: sets the route of every train at the own station, reads its signal's aspect and
/// lets the equipment that the train uses wear.
class RouteSetting {
 public:
  /// Reads the station's routes; a station without any sets none.
  RouteSetting(StationSession& station, Attempt& attempt);

  /// Sets the route of a movement at the own station. The text is the signal's answer, such as
  /// "A1 shows RG"; nothing when the station has no route for it.
  [[nodiscard]] std::optional<std::string> set_for(const Movement& movement, Attempt& attempt);

 private:
  [[nodiscard]] const Route* route_of(const Movement& movement);

  StationSession& station_;
  std::vector<Route> routes_;
};

}  // namespace ravelinox::host
