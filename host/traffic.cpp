// Reports movements to the component as they fall due. After each one only the rows of the train
// concerned are read again: the component has moved them.
#include "host/traffic.hpp"

#include <limits>

namespace ravelinox::host {

Traffic::Traffic(StationSession& station, Timestamp start, Deviations deviations)
    : station_(station), deviations_(deviations) {
  for (Run& run : runs_through(station)) {
    const std::int32_t train = run.train;
    const auto [entry, added] = journeys_.emplace(train, Journey(std::move(run), start));
    note_past(entry->second, start);
    enqueue(entry->second);
  }
}

void Traffic::note_past(const Journey& journey, Timestamp start) {
  for (const RunStop& stop : journey.stops()) {
    if (stop.station != station_.name()) continue;
    for (const Event event : {Event::arrival, Event::departure}) {
      if (stop.expected(event) && *stop.expected(event) <= start) {
        happened_here_.insert({journey.train(), event});
      }
    }
  }
}

void Traffic::enqueue(const Journey& journey) {
  if (journey.finished()) return;
  queue_.push({journey.real_time(deviations_.next()), journey.train()});
}

std::optional<Timestamp> Traffic::next_due() const {
  if (queue_.empty()) return std::nullopt;
  return queue_.top().time;
}

Movement Traffic::record_next(Attempt& attempt) {
  const Due due = queue_.top();
  queue_.pop();
  Journey& journey = journeys_.at(due.train);
  Movement movement{due.train,
                    journey.event(),
                    due.time,
                    journey.stop(),
                    journey.stops().front().station,
                    journey.stops().back().station};
  report(journey, due.time, attempt);
  if (movement.stop.station == station_.name()) {
    happened_here_.insert({movement.train, movement.event});
  }
  journey.advance(due.time, read_again(journey, attempt));
  enqueue(journey);
  return movement;
}

void Traffic::report(const Journey& journey, Timestamp time, Attempt& attempt) {
  const RunStop& stop = journey.stop();
  const std::int32_t correction = journey.correction();
  station_.component.RegistraEvento(event_word(journey.event()), journey.train(), time,
                                    stop.station);
  if (correction == 0 || !std::in_range<std::int16_t>(correction)) return;
  attempt("The run of train " + std::to_string(journey.train()), [&] {
    station_.component.RitardaTreno(journey.train(), static_cast<std::int16_t>(correction),
                                    stop.scheduled_departure.value_or(time) + 1);
  });
}

std::vector<RunStop> Traffic::read_again(const Journey& journey, Attempt& attempt) {
  std::vector<RunStop> stops = journey.stops();
  attempt("The rows of train " + std::to_string(journey.train()),
          [&] { stops = stops_of(station_, journey.train()); });
  return stops;
}

}  // namespace ravelinox::host
