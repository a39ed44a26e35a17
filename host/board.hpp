#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/attempt.hpp"
#include "host/timetable.hpp"

namespace ravelinox::host {

/// A train on the board of arrivals or departures.
struct BoardRow {
  std::int32_t train = 0;
  std::string category;
  std::string place;  ///< where it comes from, or goes to
  std::string track;
  std::string planned_track;  ///< differs from `track` when the platform was changed
  Timestamp scheduled = 0;
  Timestamp expected = 0;
  bool at_platform = false;

  /// Whole minutes, rounded down as the component does: 59 s late is 0, 1 s early is -1.
  [[nodiscard]] std::int32_t delay_minutes() const;
};

struct Board {
  std::vector<BoardRow> arrivals, departures;  ///< by expected time
};

/// A train's row at the own station with what the board needs to know of the train.
struct BoardCall {
  std::int32_t train = 0;
  std::string category;
  RunStop stop;
};

/// Whether a train's arrival, or departure, at the own station lies behind it.
using Happened = std::function<bool(const BoardCall&, Event)>;

/// By the clock alone, for who has not watched the day: what was expected up to `moment`.
[[nodiscard]] Happened by_expectation(Timestamp moment);

/// When the call's event is to be expected. A train never leaves before it has arrived and stood
/// for its dwell, whatever its row says.
[[nodiscard]] std::optional<Timestamp> expected_time(const BoardCall& call, Event event);

/// Which calls stand on the board at `moment`: trains that come within `horizon` seconds, are
/// late, or stand at the platform; not those that pass without stopping or have left. A train
/// that ends here stays on the board of arrivals for some minutes.
[[nodiscard]] Board sort_calls(const std::vector<BoardCall>& calls, Timestamp moment,
                               Timestamp horizon, const Happened& happened);

/// Reads boards. The timetable is read anew each time; a train's run, which does not change in
/// the course of a day, once.
class BoardReader {
 public:
  BoardReader(StationSession& station, Attempt& attempt) : station_(station), attempt_(attempt) {}

  [[nodiscard]] Board read(Timestamp moment, Timestamp horizon, const Happened& happened);

  /// The trains whose times here lie between some hours before `moment` and `horizon` after it.
  [[nodiscard]] std::vector<BoardCall> calls_around(Timestamp moment, Timestamp horizon);

 private:
  void complete(BoardRow& row, Event event);
  [[nodiscard]] const std::string& run_of(std::int32_t train);

  StationSession& station_;
  Attempt& attempt_;
  std::map<std::int32_t, std::string> runs_;
};

/// The board as text, at most `limit` trains; one line says so when there are none.
[[nodiscard]] std::vector<std::string> board_lines(const Board& board, Event side,
                                                   std::size_t limit);

}  // namespace ravelinox::host
