#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "host/import/stations.hpp"
#include "host/import/timetable.hpp"

namespace ravelinox::host {

/// The line between two neighbouring stations.
struct Section {
  std::size_t first;
  std::size_t second;
  double length_km;
  bool double_track;
};

/// The line as the trains' runs show it. Two stations are neighbours when trains run from one to
/// the other without calling between them, unless other trains show stations on the way.
class Network {
 public:
  Network(const std::vector<Train>& trains, const Stations& stations);

  [[nodiscard]] const std::vector<Section>& sections() const { return sections_; }

  /// The neighbours of each station; the place in the list plus 1 is the number of the access.
  [[nodiscard]] const std::map<std::size_t, std::vector<std::size_t>>& accesses() const {
    return accesses_;
  }

 private:
  using Pair = std::pair<std::size_t, std::size_t>;  // the smaller index first
  struct Hop {
    std::int32_t seconds;  ///< of the fastest train
    std::size_t trains = 0;
    bool skips = false;
  };

  void collect(const Train& train);
  void find_skips(const Train& train);

  std::map<Pair, Hop> hops_;
  std::vector<Section> sections_;
  std::map<std::size_t, std::vector<std::size_t>> accesses_;
};

}  // namespace ravelinox::host
