#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/import/summary.hpp"
#include "host/import/timetable.hpp"

namespace ravelinox::host {

/// Gives every call a platform track. The feed's tracks stay. At the own station the others are
/// allotted by occupancy: no two trains on a track at the same time on a common day, with some
/// minutes between them, trains from the same side on the same track where it is free, and as few
/// tracks as will do. At other stations trains of one direction share a track.
///
/// Returns the own station's tracks in the order of their numbers.
std::vector<std::string> allot_tracks(std::vector<Train>& trains, std::size_t station,
                                      Tally& adapted);

}  // namespace ravelinox::host
