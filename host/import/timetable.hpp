#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/import/calendar.hpp"

namespace ravelinox::host {

/// A train at a station of its run. Seconds from midnight of the day on which the train starts.
struct Call {
  std::size_t station = 0;
  std::int32_t arrival = 0;    ///< of no meaning at the first call
  std::int32_t departure = 0;  ///< of no meaning at the last call
  bool passes = false;         ///< nobody boards or alights: arrival and departure are equal
  std::string track;

  friend bool operator==(const Call&, const Call&) = default;
};

/// What the boards call a train, and what goes with it.
struct Category {
  std::string_view code;
  std::string_view note;  ///< refines the code
  int length_m;
  int top_speed_kmh;
  int dwell_s;  ///< shortest stop

  friend bool operator==(const Category&, const Category&) = default;
};

struct Train {
  std::int32_t number = 0;
  std::string trip;
  const Category* category = nullptr;
  std::string undertaking;
  std::vector<Call> calls;
  DaySet days;            ///< of its start
  std::size_t shift = 0;  ///< how many days after the day of service it starts
  bool on_demand = false;
};

}  // namespace ravelinox::host
