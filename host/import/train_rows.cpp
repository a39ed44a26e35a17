// The timetable as rows: general data of each train, and each of its calls.
#include <algorithm>

#include "host/import/day_code.hpp"
#include "host/import/tables.hpp"

namespace ravelinox::host {
namespace {

constexpr std::int32_t base_time = 86'400;  // 0 would do, but reads like "no time" to some
constexpr std::int32_t recovery_percent = 5;
constexpr std::int32_t most_recovery = 180;

class RunningDays {
 public:
  explicit RunningDays(const Calendar& calendar)
      : last_(static_cast<std::size_t>((calendar.last - calendar.first).count())),
        codes_(calendar.first, DaySet().size()) {}

  std::string of(const Train& train) const {
    if (train.on_demand) return {};
    // A train that starts after the day of service may run on the day after the last. Where that
    // is the date of the first, a year on, the first cannot be spoken of.
    const bool year_full = last_ + train.shift >= 365;
    return codes_.code(train.days, year_full ? train.shift : 0, last_ + train.shift);
  }

 private:
  std::size_t last_;
  DayCodes codes_;
};

std::vector<Variant> general_row(const Train& train, std::string running_days) {
  const auto& category = *train.category;
  const auto speed = static_cast<std::int16_t>(category.top_speed_kmh);
  return {train.number,
          category.code,
          train.undertaking,
          category.note,
          std::move(running_days),
          static_cast<std::int16_t>(category.length_m),
          "L",  // on the line, as after the set-up's reset
          "S",
          "0",
          false,  // no priority
          "--",   // no cause of delay
          speed,
          speed,
          true};
}

std::int16_t dwell(const Train& train, std::size_t i) {
  const auto& call = train.calls[i];
  const bool inner = i > 0 && i + 1 < train.calls.size();
  if (call.passes) return 0;
  const auto shortest = train.category->dwell_s;
  return static_cast<std::int16_t>(inner ? std::min(shortest, call.departure - call.arrival)
                                         : shortest);
}

/// What a train can win back on the way to a station: a share of the running time.
std::int16_t recovery(const Train& train, std::size_t i) {
  if (i == 0) return 0;
  const auto running = train.calls[i].arrival - train.calls[i - 1].departure;
  return static_cast<std::int16_t>(std::min(running * recovery_percent / 100, most_recovery));
}

std::vector<Variant> call_row(const Train& train, std::size_t i, const Stations& stations) {
  const auto& call = train.calls[i];
  const Variant arrival = i == 0 ? Variant::null() : Variant(base_time + call.arrival);
  const Variant departure =
      i + 1 == train.calls.size() ? Variant::null() : Variant(base_time + call.departure);
  return {train.number,    stations[call.station].name, arrival,   departure, arrival, departure,
          dwell(train, i), recovery(train, i),          call.track};
}

}  // namespace

Rows train_rows(const Timetable& timetable) {
  Rows rows;
  const RunningDays running_days(timetable.calendar);
  for (const auto& train : timetable.trains) {
    rows.emplace_back("generalita_treni", general_row(train, running_days.of(train)));
    for (std::size_t i = 0; i < train.calls.size(); ++i) {
      rows.emplace_back("circolazione", call_row(train, i, timetable.stations));
    }
  }
  return rows;
}

}  // namespace ravelinox::host
