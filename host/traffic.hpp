#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/attempt.hpp"
#include "host/due_queue.hpp"
#include "host/journey.hpp"
#include "host/seeded_random.hpp"

namespace ravelinox::host {

/// A movement that was just recorded, with its row as it stood before.
struct Movement {
  std::int32_t train = 0;
  Event event = Event::arrival;
  Timestamp time = 0;
  RunStop stop;
  std::string origin, terminus;

  [[nodiscard]] Timestamp delay() const { return time - stop.scheduled(event).value_or(time); }
};

/// The world outside: every train that comes through the station moves along its run, close to
/// what the component expects, and each of its movements is reported once, in the order of time.
class Traffic {
 public:
  /// Reads the prepared day. Movements expected up to `start` are not reported.
  Traffic(StationSession& station, Timestamp start, Deviations deviations);

  /// When the next movement happens; nothing when all trains have arrived.
  [[nodiscard]] std::optional<Timestamp> next_due() const;

  /// Records the movement that is due next and looks at what it did to the train's run.
  Movement record_next(Attempt& attempt);

  /// Whether the train has arrived at, or left, the own station.
  [[nodiscard]] bool happened(std::int32_t train, Event event) const {
    return happened_here_.contains({train, event});
  }

 private:
  void enqueue(const Journey& journey);
  void note_past(const Journey& journey, Timestamp start);
  void report(const Journey& journey, Timestamp time, Attempt& attempt);
  [[nodiscard]] std::vector<RunStop> read_again(const Journey& journey, Attempt& attempt);

  StationSession& station_;
  Deviations deviations_;
  std::map<std::int32_t, Journey> journeys_;
  DueQueue queue_;
  std::set<std::pair<std::int32_t, Event>> happened_here_;
};

}  // namespace ravelinox::host
