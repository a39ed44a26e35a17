// The two public conversions between timestamps and calendar moments.
#include "core/clock.hpp"

#include <string>

#include "platform/arithmetic.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox {

std::int32_t cmdl1::MkTime(std::uint8_t Ore, std::uint8_t Minuti, std::uint8_t Secondi,
                           std::uint8_t Giorno, std::uint8_t Mese, std::int16_t Anno) {
  using namespace std::chrono;
  // The calendar's first year is the one after -32768. Four years later the months are as long, and
  // as far out of a timestamp's reach.
  const int years = Anno < int{year::min()} ? Anno + 4 : Anno;
  const year_month_day date{year{years}, month{Mese}, day{Giorno}};
  if (Ore > 23 || Minuti > 59 || Secondi > 59 || !date.ok()) {
    throw Error(ErrorNumber::type_mismatch,
                "There is no moment " + std::to_string(Ore) + ":" + std::to_string(Minuti) + ":" +
                    std::to_string(Secondi) + " " + std::to_string(Giorno) + "/" +
                    std::to_string(Mese) + "/" + std::to_string(Anno) + ".");
  }
  const sys_seconds moment = sys_days{date} + hours{Ore} + minutes{Minuti} + seconds{Secondi};
  return checked<Timestamp>(moment.time_since_epoch().count());
}

DateTime cmdl1::UnMkTime(std::int32_t timestamp) { return to_date_time(timestamp); }

}  // namespace ravelinox
