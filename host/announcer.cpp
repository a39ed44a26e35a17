// When a station speaks. What it says is the component's.
#include "host/announcer.hpp"

#include "host/track_changes.hpp"

namespace ravelinox::host {
namespace {

// How long before its moment a thing is announced.
constexpr Timestamp delay_lead = 30 * minute;
constexpr Timestamp track_change_lead = 10 * minute;
constexpr Timestamp ready_lead = 6 * minute;
constexpr Timestamp arrival_lead = 3 * minute;
constexpr Timestamp departure_lead = 2 * minute;

constexpr Timestamp advice_interval = 30 * minute;
constexpr Timestamp advice_offset = 10 * minute;  // off the full hour, where trains are dense

constexpr Timestamp delay_step = 5 * minute;

}  // namespace

void Announcer::at_minute(Timestamp moment, const std::vector<BoardCall>& calls,
                          const Happened& happened, const Announce& announce) {
  for (const BoardCall& call : calls) about(call, moment, happened, announce);
  if (moment % advice_interval == advice_offset) announce({"Comunicazioni generali"});
}

void Announcer::about(const BoardCall& call, Timestamp moment, const Happened& happened,
                      const Announce& announce) {
  for (const Event event : {Event::arrival, Event::departure}) {
    const auto time = expected_time(call, event);
    if (!time || happened(call, event)) continue;
    about_delay(call, event, moment, announce);
    about_movement(call, event, *time - moment, moment, announce);
    return;  // first things first: a train leaves after it has come
  }
}

void Announcer::about_delay(const BoardCall& call, Event event, Timestamp moment,
                            const Announce& announce) {
  const auto scheduled = call.stop.scheduled(event);
  if (!scheduled || call.stop.passes() || *scheduled - moment > delay_lead) return;
  const Timestamp steps = (*expected_time(call, event) - *scheduled) / delay_step;
  const std::tuple stage{call.train, std::string("Ritardo"), static_cast<int>(steps)};
  if (steps < 1 || made_.contains(stage)) return;
  // The component may not know of the delay yet; then it is asked again in the next minute.
  if (announce({"Ritardo", call.train, moment})) made_.insert(stage);
}

void Announcer::about_movement(const BoardCall& call, Event event, Timestamp left, Timestamp moment,
                               const Announce& announce) {
  const bool arrives = event == Event::arrival;
  const auto changed = changed_track(track_changes_, call.train);
  const Timestamp lead = arrives ? arrival_lead : departure_lead;
  if (call.stop.passes()) {
    if (left <= lead)
      once(0, {"Transito", call.train, changed.value_or(call.stop.track)}, announce);
  } else if (changed && *changed != call.stop.track) {
    // The other sentences name the timetable's track, so this one stands for them.
    const Announcement change{"Cambio binario", call.train, *changed, call.stop.track};
    if (left <= track_change_lead) once(0, change, announce);
    if (left <= lead) once(arrives ? 1 : 2, change, announce);
  } else if (arrives) {
    if (left <= lead) once(0, {"Arrivo", call.train, moment}, announce);
  } else {
    const bool starts_here = !call.stop.expected_arrival;
    if (starts_here && left <= ready_lead) once(0, {"Pronto", call.train}, announce);
    if (left <= lead) once(0, {"Partenza", call.train}, announce);
  }
}

void Announcer::once(int stage, const Announcement& announcement, const Announce& announce) {
  if (made_.insert({announcement.train, announcement.procedure, stage}).second) {
    announce(announcement);
  }
}

}  // namespace ravelinox::host
