#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ravelinox/export.hpp"
#include "ravelinox/telephone.hpp"

namespace ravelinox {

/// The component's one source of random numbers. A scripted source makes a set-up reproducible to
/// the byte: draws are taken exactly in the order of the rules, one for each r that a rule names.
class RAVELINOX_API RandomSource {
 public:
  virtual ~RandomSource() = default;
  /// A uniform number in [0, 1), never 1.
  [[nodiscard]] virtual float draw() = 0;
  /// Starts a new sequence, seeded from the clock; a reproducible source ignores it.
  virtual void reseed() = 0;
};

/// A voice that speaks announcements. One is made for each announcement and released after it.
class RAVELINOX_API Voice {
 public:
  virtual ~Voice() = default;
  /// Speaks a text, UTF-8, to its end; an empty text says nothing. A failure is an `Error`.
  virtual void speak(const std::string& text) = 0;
};

/// What the component takes from its surroundings, each with the real thing as default. Replace
/// members before calls run; they are read by every object on every thread.
struct Platform {
  /// Default: one sequence per thread, so that objects on different threads never meet.
  std::shared_ptr<RandomSource> random;

  /// The folder of "Output.ssi" and the log, without a separator at its end. Default: the real
  /// folder of the file that holds the component (symbolic links followed), found when the
  /// library was loaded. A host that cannot write there sets its own.
  std::string component_folder;

  /// Makes the telephone's window when a message opens it. Empty or returning null: the messages
  /// have no view. A factory that throws counts as returning null. Default: `desktop_telephone`
  /// with the program found beside the component.
  TelephoneWindowFactory telephone_window;

  /// The system beep, called each time the rules sound it. Default: the terminal's bell, at most
  /// a few times a second, and only when standard error is a terminal.
  std::function<void()> beep;

  /// Makes the voice of one announcement. Empty or returning null: announcements fail with 429.
  /// Default: the desktop's speech service (speech-dispatcher) with its own voice and settings,
  /// started when it does not run; 429 when there is none, 0x80004005 when it fails while it
  /// speaks. It never waits for ever, and raises no signal when the service dies.
  std::function<std::unique_ptr<Voice>()> voice{};
};

/// The set in force, one for the process.
[[nodiscard]] RAVELINOX_API Platform& platform();

/// Puts another set in force for its own lifetime. Overrides nest like scopes.
class RAVELINOX_API PlatformOverride {
 public:
  explicit PlatformOverride(Platform replacement);
  PlatformOverride(const PlatformOverride&) = delete;
  PlatformOverride& operator=(const PlatformOverride&) = delete;
  ~PlatformOverride();

 private:
  Platform previous_;
};

}  // namespace ravelinox
