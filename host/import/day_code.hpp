#pragma once

#include <string>
#include <vector>

#include "host/import/calendar.hpp"

namespace ravelinox::host {

/// Writes sets of days as the shortest day codes that admit exactly those.
///
///   every Monday to Friday                   " 1 2 3 4 5 "
///   Monday to Saturday, not on holidays      " 1 2 3 4 5 6 eF "
///   Sundays and all other holidays           " Fes "
///   Mondays, but not on 13 July              " 1 e1307 "
///   two single days                          " 0104 0304 "
class DayCodes {
 public:
  /// For sets counted from `first`, of `count` days at most.
  DayCodes(Day first, std::size_t count);

  /// The code that is right for the days from `from` to `to`, which must lie within a year. The
  /// set must not be empty, for an empty code marks a train on demand.
  [[nodiscard]] std::string code(const DaySet& days, std::size_t from, std::size_t to) const;

 private:
  struct DayOfYear {
    std::string date;  ///< "2204"
    std::size_t weekday;
    bool holiday;
  };

  [[nodiscard]] std::string by_weekdays(const DaySet& days, std::size_t from, std::size_t to,
                                        bool no_holidays) const;

  std::vector<DayOfYear> days_;
};

}  // namespace ravelinox::host
