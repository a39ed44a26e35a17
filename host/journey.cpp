// A train's progress and the small physics of the world outside.
#include "host/journey.hpp"

#include <algorithm>
#include <utility>

namespace ravelinox::host {

Journey::Journey(Run run, Timestamp start) : run_(std::move(run)), start_(start) {
  for (std::size_t movement = 0; movement < 2 * run_.stops.size(); ++movement) {
    if (exists(movement) && *run_.stops[movement / 2].expected(event_of(movement)) <= start) {
      next_ = movement + 1;
    }
  }
  skip_absent();
}

bool Journey::exists(std::size_t movement) const {
  return run_.stops[movement / 2].expected(event_of(movement)).has_value();
}

void Journey::skip_absent() {
  while (!finished() && !exists(next_)) ++next_;
}

Timestamp Journey::real_time(std::int32_t deviation) const {
  const Timestamp wished = (event() == Event::departure ? planned() : expected()) + deviation;
  return std::max(wished, earliest());
}

Timestamp Journey::earliest() const {
  if (!last_time_) return start_;
  if (event() == Event::departure) return *last_time_ + stop().dwell;
  const std::size_t here = next_ / 2;
  const auto& left = here == 0 ? std::nullopt : run_.stops[here - 1].scheduled_departure;
  const auto& arrives = stop().scheduled_arrival;
  return left && arrives ? *last_time_ + (*arrives - *left) / 2 : *last_time_;
}

std::int32_t Journey::correction() const {
  return event() == Event::departure ? expected() - planned() : 0;
}

void Journey::advance(Timestamp time, std::vector<RunStop> stops) {
  planned_departure_.reset();
  if (event() == Event::arrival && stop().expected_departure) {
    planned_departure_ = *stop().expected_departure + (time - expected());
  }
  last_time_ = time;
  // A run that another program removed meanwhile ends here.
  if (stops.size() != run_.stops.size()) next_ = 2 * stops.size();
  run_.stops = std::move(stops);
  ++next_;
  skip_absent();
}

}  // namespace ravelinox::host
