#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ravelinox/telephone.hpp"

namespace ravelinox::host {

/// What a dispatcher says on the telephone.
struct Message {
  std::string caller;
  std::string text;

  /// Whether it tells that a train of today is cancelled.
  [[nodiscard]] bool suppression_today() const;
  [[nodiscard]] bool extraordinary_train() const;
};

using MessageSink = std::function<void(const Message&)>;

/// A telephone for `Platform::telephone_window` that hands every message on as it comes, and then
/// shows it in a window of `windows`, where messages stack up until the operator sends or closes.
/// Where there is no window, each is acknowledged at once.
[[nodiscard]] TelephoneWindowFactory telephone_to(MessageSink sink,
                                                  TelephoneWindowFactory windows = nullptr);

}  // namespace ravelinox::host
