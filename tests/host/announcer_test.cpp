#include "host/announcer.hpp"

#include <gtest/gtest.h>

#include "host/calls.hpp"
#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;
using Said = std::vector<std::string>;

/// "9:57 Arrivo 1" for every announcement from 9:30 on, minute by minute. The component says
/// nothing of a delay before 9:45, when it hears of it.
Said announced(const BoardCall& train, const std::string& changes) {
  Announcer announcer(changes);
  Said said;
  for (Timestamp moment = now - 29 * minute; moment < now + 15 * minute; moment += minute) {
    const Announce announce = [&](const Announcement& made) {
      if (made.procedure == "Ritardo" && moment < now - 15 * minute) return false;
      if (made.procedure == "Comunicazioni generali") return true;
      const std::string track = made.first.get_if<std::string>() ? " " + joined(made.first) : "";
      said.push_back(show_time(moment) + " " + made.procedure + track);
      return true;
    };
    announcer.at_minute(moment, {train}, by_expectation(moment), announce);
  }
  return said;
}

TEST(Announcer, SaysEachThingOnceAndInTime) {
  const std::string changed = "Cambio binario 8";
  for (const auto& [train, changes, said] : Table<BoardCall, std::string, Said>{
           {call(1, 0, 2), "", {"09:57 Arrivo", "10:00 Partenza"}},
           {call(1, none, 2), "", {"09:56 Pronto", "10:00 Partenza"}},
           {call(1, 0, none), "", {"09:57 Arrivo"}},
           {call(1, 0, 2, 7), "", {"09:45 Ritardo", "10:04 Arrivo", "10:07 Partenza"}},
           {call(1, 0, 0), "", {"09:57 Transito 1"}},
           {call(1, 0, 0), "|1@8", {"09:57 Transito 8"}},
           {call(1, 0, 2),
            "|2@9|1@8",
            {"09:50 " + changed, "09:57 " + changed, "10:00 " + changed}}}) {
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
  for (const auto& [late, told] : Table<Timestamp, int>{{4, 0}, {5, 1}, {9, 1}, {10, 2}, {6, 2}}) {
    const Timestamp moment = now + (late - 20) * minute;
    announcer.at_minute(moment, {call(1, 0, 2, late)}, by_expectation(moment), count);
    EXPECT_EQ(delays, told) << late;
  }
}

}  // namespace
}  // namespace ravelinox::host
