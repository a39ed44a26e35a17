#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/timetable.hpp"

namespace ravelinox::host {

/// One train's way through its run, movement by movement: where it is, and when the next movement
/// can really happen. Values only; recording is `Traffic`'s.
class Journey {
 public:
  /// Movements expected up to `start` lie behind the train already.
  Journey(Run run, Timestamp start);

  [[nodiscard]] std::int32_t train() const { return run_.train; }
  [[nodiscard]] const std::vector<RunStop>& stops() const { return run_.stops; }
  [[nodiscard]] bool finished() const { return next_ >= 2 * run_.stops.size(); }

  /// The next movement; only while not finished.
  [[nodiscard]] Event event() const { return event_of(next_); }
  [[nodiscard]] const RunStop& stop() const { return run_.stops[next_ / 2]; }
  [[nodiscard]] Timestamp expected() const { return *stop().expected(event()); }

  /// When the next movement happens if the train differs by `deviation` from what is expected.
  /// Never before the train can: it has to stand for its dwell and cannot run twice as fast as
  /// its timetable.
  [[nodiscard]] Timestamp real_time(std::int32_t deviation) const;

  /// How far the later stations' expected times go wrong when the next movement is recorded.
  ///
  /// Recording an arrival makes the expected departure the timetable's plus the arrival's
  /// deviation, forgetting the delay that the train already had. Its departure then deviates by
  /// that whole delay, and the stations ahead, which knew of it, would get it a second time. So
  /// the recording of a departure is followed by a `RitardaTreno` by this many seconds.
  [[nodiscard]] std::int32_t correction() const;

  /// The next movement was recorded at `time`; `stops` is the run as it stands afterwards.
  void advance(Timestamp time, std::vector<RunStop> stops);

 private:
  // Movement 2 i is the arrival at stop i, movement 2 i + 1 the departure from it.
  static Event event_of(std::size_t movement) {
    return movement % 2 == 0 ? Event::arrival : Event::departure;
  }
  [[nodiscard]] bool exists(std::size_t movement) const;
  void skip_absent();
  [[nodiscard]] Timestamp earliest() const;
  [[nodiscard]] Timestamp planned() const { return planned_departure_.value_or(expected()); }

  Run run_;
  Timestamp start_;
  std::size_t next_ = 0;
  std::optional<Timestamp> last_time_;          ///< of the movement recorded last
  std::optional<Timestamp> planned_departure_;  ///< from the stop where the train stands
};

}  // namespace ravelinox::host
