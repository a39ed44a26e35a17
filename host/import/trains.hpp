#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "host/import/calendar.hpp"
#include "host/import/timetable.hpp"
#include "host/import/trips.hpp"

namespace ravelinox::host {

/// Makes the trains of the trips, in the order of the trips' ids. Trips of one number, or of none,
/// that run alike on different days become one train; all others stay trains of their own, so that
/// on each day there are as many trains as trips. Trips that run on no day are left out: a train
/// without days would be one on demand.
[[nodiscard]] std::vector<Train> make_trains(
    const Trips& trips, const std::map<std::string, std::vector<TimetableRow>>& rows,
    const Calendar& calendar, TrainNumbers& numbers, ImportSummary& summary);

/// Adds invented trains on demand, for simulations that want them: copies of real runs, spread
/// over the day, some minutes later and with numbers of their own.
void add_trains_on_demand(std::vector<Train>& trains, std::size_t count, std::size_t station,
                          TrainNumbers& numbers, ImportSummary& summary);

/// The train's call at a station; nothing when it does not come there.
[[nodiscard]] const Call* call_at(const Train& train, std::size_t station);

}  // namespace ravelinox::host
