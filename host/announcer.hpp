#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "host/board.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox::host {

/// A call of `AutAsSintesiVocale`.
struct Announcement {
  std::string procedure;
  std::int32_t train = 0;
  Variant first = Variant::missing();
  Variant second = Variant::missing();
};

/// Makes the announcement; whether anything was said.
using Announce = std::function<bool(const Announcement&)>;

/// Decides, minute by minute, what a station tells its passengers: trains that come in, are
/// ready, leave or run through, delays as they grow, changed platforms, and now and then a word of
/// general advice. Each thing once.
class Announcer {
 public:
  /// `track_changes` is the list in `AutAsModificheBin`.
  explicit Announcer(std::string track_changes) : track_changes_(std::move(track_changes)) {}

  /// What is due at `moment`, given the calls around it.
  void at_minute(Timestamp moment, const std::vector<BoardCall>& calls, const Happened& happened,
                 const Announce& announce);

 private:
  void about(const BoardCall& call, Timestamp moment, const Happened& happened,
             const Announce& announce);
  void about_delay(const BoardCall& call, Event event, Timestamp moment, const Announce& announce);
  void about_movement(const BoardCall& call, Event event, Timestamp left, Timestamp moment,
                      const Announce& announce);
  void once(int stage, const Announcement& announcement, const Announce& announce);

  std::string track_changes_;
  std::set<std::tuple<std::int32_t, std::string, int>> made_;  ///< train, procedure, stage
};

}  // namespace ravelinox::host
