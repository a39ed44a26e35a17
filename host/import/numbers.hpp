#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ravelinox::host {

/// The train number in a trip's short name: the first word of digits alone.
///
///   "04042"          4042
///   "18391*18392"    18391    a train that changes its number on the way
///   "IC 523"         523
///   "RE1", "", "0"   none
[[nodiscard]] std::optional<std::int32_t> number_in(std::string_view short_name);

struct TripName {
  std::string trip;
  std::string short_name;
};

/// A number for every trip of a feed: no two the same, and the same ones each time the feed is
/// read, whatever station it is read for and however its rows are ordered.
///
/// The first trip by id keeps the number in its short name. Each further trip of the same name, a
/// day variant, has it with a count in front: 4042, 104042, 204042. Trips without a number follow
/// the highest ones.
class TrainNumbers {
 public:
  explicit TrainNumbers(std::vector<TripName> trips);

  [[nodiscard]] std::int32_t of(const std::string& trip) const { return numbers_.at(trip); }

  /// A further number that no train has.
  std::int32_t made();

 private:
  std::int32_t step_ = 0;  ///< the power of ten above all numbers in short names
  std::int32_t next_ = 0;
  std::unordered_map<std::string, std::int32_t> numbers_;
  std::set<std::int32_t> taken_;
};

}  // namespace ravelinox::host
