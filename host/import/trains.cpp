// Trips become trains: joined where they are one train on different days, numbered, and with days.
#include "host/import/trains.hpp"

#include <algorithm>
#include <tuple>

namespace ravelinox::host {
namespace {

constexpr std::int32_t day_seconds = 86'400;

/// What two trips must share to be the same train on different days.
struct Likeness {
  std::optional<std::int32_t> number;
  std::string_view category;
  std::string_view note;
  std::string_view undertaking;
  std::size_t shift;
  std::vector<std::tuple<std::size_t, std::int32_t, std::int32_t, bool, std::string>> calls;

  friend auto operator<=>(const Likeness&, const Likeness&) = default;
};

Likeness likeness(const Train& train, const Trip& trip) {
  Likeness key{number_in(trip.short_name), train.category->code, train.category->note,
               trip.undertaking,           train.shift,          {}};
  for (const auto& call : train.calls) {
    key.calls.emplace_back(call.station, call.arrival, call.departure, call.passes, call.track);
  }
  return key;
}

class Maker {
 public:
  Maker(TrainNumbers& numbers, ImportSummary& summary) : numbers_(numbers), summary_(summary) {}

  void add(const Trip& trip, std::vector<std::vector<Call>> runs, const DaySet& days) {
    bool first = true;
    for (auto& calls : runs) {
      Train train{0, trip.id, trip.category, trip.undertaking, std::move(calls), {}, 0, false};
      train.shift = move_to_first_day(train.calls);
      train.days = days << train.shift;
      if (!join(train, trip)) keep(std::move(train), trip, first);
      first = false;
    }
  }

  std::vector<Train> take() { return std::move(trains_); }

 private:
  bool join(const Train& train, const Trip& trip) {
    for (const auto index : alike_[likeness(train, trip)]) {
      auto& other = trains_[index];
      if ((other.days & train.days).any()) continue;
      other.days |= train.days;
      summary_.adapted.add("trips that run alike on different days, joined to one train",
                           "trip " + trip.id + " to " + other.trip);
      return true;
    }
    return false;
  }

  void keep(Train train, const Trip& trip, bool first) {
    const auto wanted = number_in(trip.short_name);
    train.number = first ? numbers_.of(trip.id) : numbers_.made();
    if (!wanted || !first) {
      summary_.adapted.add("trains without a number of their own, given the next free one",
                           "trip " + trip.id + " is train " + std::to_string(train.number));
    } else if (train.number != *wanted) {
      summary_.adapted.add("trains whose number another trip has, given it with a count in front",
                           "trip " + trip.id + " is train " + std::to_string(train.number));
    }
    alike_[likeness(train, trip)].push_back(trains_.size());
    trains_.push_back(std::move(train));
  }

  TrainNumbers& numbers_;
  ImportSummary& summary_;
  std::vector<Train> trains_;
  std::map<Likeness, std::vector<std::size_t>> alike_;
};

}  // namespace

std::vector<Train> make_trains(const Trips& trips,
                               const std::map<std::string, std::vector<TimetableRow>>& rows,
                               const Calendar& calendar, TrainNumbers& numbers,
                               ImportSummary& summary) {
  Maker maker(numbers, summary);
  for (const auto& [id, trip] : trips.calling) {
    const auto days = calendar.days(trip.service);
    if (days.none()) {
      summary.dropped.add("runs on no day of the dates asked for", "trip " + id);
      continue;
    }
    try {
      maker.add(trip, make_runs(rows.at(id), summary.adapted, "trip " + id), days);
    } catch (const UnusableTrip& unusable) {
      summary.dropped.add(unusable.what(), "trip " + id);
    }
  }
  return maker.take();
}

void add_trains_on_demand(std::vector<Train>& trains, std::size_t count, std::size_t station,
                          TrainNumbers& numbers, ImportSummary& summary) {
  constexpr std::int32_t later = 13 * 60;
  std::vector<std::size_t> models;
  for (std::size_t i = 0; i < trains.size(); ++i) {
    if (call_at(trains[i], station) != nullptr) models.push_back(i);
  }
  std::sort(models.begin(), models.end(), [&](std::size_t a, std::size_t b) {
    return trains[a].calls.front().departure < trains[b].calls.front().departure;
  });
  for (std::size_t i = 0; i < std::min(count, models.size()); ++i) {
    Train train = trains[models[i * models.size() / count]];
    train.number = numbers.made();
    train.on_demand = true;
    train.days.set();
    for (auto& call : train.calls) {
      call.arrival += later;
      call.departure += later;
    }
    // Past midnight it would start on the next day; an earlier model does not matter here.
    if (train.calls.front().departure >= day_seconds) (void)move_to_first_day(train.calls);
    summary.adapted.add("trains on demand, invented as copies of real runs 13 minutes later",
                        "train " + std::to_string(train.number) + " after trip " + train.trip);
    trains.push_back(std::move(train));
  }
}

const Call* call_at(const Train& train, std::size_t station) {
  const auto call = std::find_if(train.calls.begin(), train.calls.end(),
                                 [&](const Call& c) { return c.station == station; });
  return call == train.calls.end() ? nullptr : &*call;
}

}  // namespace ravelinox::host
