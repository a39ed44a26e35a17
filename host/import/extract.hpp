#pragma once

#include "host/import/import.hpp"

namespace ravelinox::host {

/// Writes the part of a feed that concerns one station, a feed itself, into the folder
/// `options.out`: the trips that call there, whole, and what they refer to, each row with all its
/// fields. Importing it gives the same trains as importing the whole feed, but for made numbers.
///
/// Refuses what the import refuses, and a folder that holds files of a feed already unless
/// `options.force` is set.
void extract_feed(const ImportOptions& options, const ImportProgress& progress);

}  // namespace ravelinox::host
