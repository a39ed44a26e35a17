#include "host/announcer.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;
using Said = std::vector<std::string>;

/// A train at 10:00 and 10:02, its expected times `late` later; without one of the times where it
/// starts or ends.
BoardCall call(std::int32_t train, Timestamp late = 0, bool starts = false, bool ends = false) {
  RunStop stop;
  stop.station = "Borgo";
  stop.track = "3";
  if (!starts) stop.scheduled_arrival = 10 * hour;
  if (!ends) stop.scheduled_departure = 10 * hour + 2 * minute;
  if (!starts) stop.expected_arrival = *stop.scheduled_arrival + late;
  if (!ends) stop.expected_departure = *stop.scheduled_departure + late;
  return {train, "R", stop};
}

/// "9:57 Arrivo 1" for every announcement from 9:30 on, minute by minute. The component says
/// nothing of a delay before 9:45, when it hears of it.
Said announced(const BoardCall& train, const std::string& changes = "") {
  Announcer announcer(changes);
  Said said;
  for (Timestamp now = 9 * hour + 31 * minute; now < 10 * hour + 15 * minute; now += minute) {
    const Announce announce = [&](const Announcement& made) {
      if (made.procedure == "Ritardo" && now < 9 * hour + 45 * minute) return false;
      if (made.procedure == "Comunicazioni generali") return true;
      const std::string track = made.first.get_if<std::string>() ? " " + joined(made.first) : "";
      said.push_back(show_time(now) + " " + made.procedure + track);
      return true;
    };
    announcer.at_minute(now, {train}, by_expectation(now), announce);
  }
  return said;
}

TEST(Announcer, SaysEachThingOnceAndInTime) {
  BoardCall passing = call(1);
  passing.stop.scheduled_departure = passing.stop.scheduled_arrival;
  passing.stop.expected_departure = passing.stop.expected_arrival;
  for (const auto& [train, changes, said] : Table<BoardCall, std::string, Said>{
           {call(1), "", {"09:57 Arrivo", "10:00 Partenza"}},
           {call(1, 0, true), "", {"09:56 Pronto", "10:00 Partenza"}},
           {call(1, 0, false, true), "", {"09:57 Arrivo"}},
           {call(1, 7 * minute), "", {"09:45 Ritardo", "10:04 Arrivo", "10:07 Partenza"}},
           {passing, "", {"09:57 Transito 3"}},
           {passing, "|1@8", {"09:57 Transito 8"}},
           {call(1),
            "|2@9|1@8",
            {"09:50 Cambio binario 8", "09:57 Cambio binario 8", "10:00 Cambio binario 8"}}}) {
    EXPECT_EQ(announced(train, changes), said) << changes;
  }
}

TEST(Announcer, ADelayIsToldAgainWhenItGrows) {
  Announcer announcer("");
  int delays = 0;
  const Announce count = [&](const Announcement& made) {
    if (made.procedure == "Ritardo") ++delays;
    return true;
  };
  for (const auto& [late, told] : Table<Timestamp, int>{
           {4 * minute, 0}, {5 * minute, 1}, {9 * minute, 1}, {10 * minute, 2}, {6 * minute, 2}}) {
    const Timestamp now = 9 * hour + 40 * minute;
    announcer.at_minute(now + late, {call(1, late)}, by_expectation(now), count);
    EXPECT_EQ(delays, told) << late;
  }
}

}  // namespace
}  // namespace ravelinox::host
