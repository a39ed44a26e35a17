// The announcements' sentences, composed from values alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "passenger/train_run.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox {

/// What the sentences say of a train: its row at the own station and its run. Times are the
/// scheduled ones.
struct AnnouncedTrain {
  std::int32_t number;
  std::string_view category;  ///< spoken
  std::string undertaking;
  std::string cause;  ///< the delay cause's code
  Variant arrival;    ///< read by `arrival_sentence` alone
  Variant departure;
  std::string track;
  TrainRun run;
};

/// The minutes of a delay text as "+ 10" when they are worth announcing; nothing for a train that
/// is on time, early or unknown.
[[nodiscard]] std::optional<std::string> late_minutes(std::string_view delay);

/// Nothing for a train that is not late.
[[nodiscard]] std::optional<std::string> delay_sentence(const AnnouncedTrain& train,
                                                        std::string_view delay);

/// `former` is left out when Null; omitted, it fails (13).
[[nodiscard]] std::string platform_change_sentence(const AnnouncedTrain& train,
                                                   const Variant& track, const Variant& former);

/// `readiness` says what the train does, up to the track; `stops` is the text of its next stops.
[[nodiscard]] std::string departure_sentence(const AnnouncedTrain& train,
                                             std::string_view readiness, std::string_view stops);

/// A train that goes on from here.
[[nodiscard]] std::string through_arrival_sentence(const AnnouncedTrain& train,
                                                   std::string_view delay, std::string_view stops);

/// A train that ends here.
[[nodiscard]] std::string last_arrival_sentence(const AnnouncedTrain& train,
                                                std::string_view delay);

[[nodiscard]] std::string transit_sentence(const Variant& track);
[[nodiscard]] std::string station_sentence(const Variant& station);

}  // namespace ravelinox
