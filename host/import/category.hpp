#pragma once

#include <string>
#include <string_view>

#include "host/import/timetable.hpp"

namespace ravelinox::host {

/// What the feed says about the kind of a train.
struct RouteNames {
  std::string_view trip_short_name;
  std::string_view route_short_name;
  std::string_view route_long_name;
  int route_type = 2;
};

/// The category, by the first that says something: the letters before a number in the trip's and
/// in the route's short name ("ICE 27", "S1"), a word in the route's long name, its type.
[[nodiscard]] const Category& category_of(const RouteNames& names);

/// Whether trips of this route type are trains: railways and metros, not trams, buses or ships.
[[nodiscard]] bool is_railway(int route_type);

/// The railway undertaking as it is announced: without its legal form and not in capitals,
/// "Trenitalia" for "TRENITALIA S.p.A.".
[[nodiscard]] std::string undertaking_of(std::string_view agency_name);

}  // namespace ravelinox::host
