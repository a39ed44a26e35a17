#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/day.hpp"

namespace CLI {
class App;
}

namespace ravelinox::host {

/// What holds where nothing was typed.
struct DayDefaults {
  Timestamp start = 0;
  Timestamp length = day;
  double speed = 60;
  bool desktop = false;
};

/// A day as it is typed.
struct DayArguments {
  std::string start, end;
  std::optional<double> speed;
  std::optional<std::uint32_t> seed;
  std::optional<bool> speak, window;
  DayOptions options;

  /// The day that was asked for; without a seed it gets a random one.
  [[nodiscard]] DayOptions resolve(const DayDefaults& defaults) const;
};

/// The options that `run` and `demo` share.
void add_day_options(CLI::App& command, DayArguments& arguments);

}  // namespace ravelinox::host
