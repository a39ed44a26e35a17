#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_set>

#include "ravelinox/export.hpp"
#include "ravelinox/variant.hpp"

namespace ravelinox {

/// What the telephone's window shows, whole.
struct TelephoneView {
  std::string caller;
  std::string messages;        ///< one line each, oldest first, separated by CR LF
  bool reply_enabled = false;  ///< the list of answers
  bool send_enabled = false;   ///< the button "Invia"
};

/// A window for the telephone. A host with a toolkit of its own derives from this; its factory
/// stands in `Platform::telephone_window`. One window is one life of the dialog: it is made by the
/// first message, told of every further one, and destroyed at the end. No call may block or wait
/// for the operator. A window that throws is destroyed as lost, with its messages unanswered.
class RAVELINOX_API TelephoneWindow {
 public:
  /// How long after a message the window takes the focus once more.
  static constexpr std::chrono::milliseconds focus_delay{5000};

  virtual ~TelephoneWindow() = default;

  /// Shows the state in front and takes the focus, and takes it once more after `focus_delay`,
  /// on the window's own one-shot timer; a delay that is running already goes on. The first call
  /// centres the window on the screen. Over one window's life the messages only grow at their end.
  /// A window lost other than by the operator (its display went) comes back here if it can, with
  /// all that is unanswered.
  virtual void show(const TelephoneView& view) = 0;

  /// Whether the operator has sent the answer or closed the window since it was made. A window
  /// that was lost is not closed: its messages stay unanswered.
  [[nodiscard]] virtual bool closed() = 0;
};

/// Makes a window, or null when there is nothing to show it on.
using TelephoneWindowFactory = std::function<std::unique_ptr<TelephoneWindow>()>;

/// The windows of the program `ravelinox-telephone`, which runs beside the host and ends with it:
/// with the window, with the host's thread that received the message, or with the host. Given is
/// the program's path, or a folder: the program is then looked for in that folder, in ../libexec,
/// in ../bin and in ../../libexec from there. Makes no window when the program is missing or the
/// environment names no display. A program that dies is started again by the next message, yet not
/// twice within `retry_after`, so a dead display costs nothing that could be measured. The host's
/// signal handlers, locale and other children are left alone.
[[nodiscard]] RAVELINOX_API TelephoneWindowFactory
desktop_telephone(const std::string& program_or_folder,
                  std::chrono::milliseconds retry_after = std::chrono::seconds(5));

/// A text of train numbers, each after one space, in the order of recording. The text is the
/// truth; a set beside it remembers what was parsed, so that asking does not grow with the day.
class RAVELINOX_API MovementList {
 public:
  MovementList() = default;
  MovementList& operator=(std::string text);  ///< replaces the text, parsed anew when asked
  [[nodiscard]] const std::string& text() const noexcept { return text_; }

  void append(std::int32_t train);

  /// Whether an item has this value. Items after one that is no number are not reached: 13 when
  /// the train does not stand before it. 6 (overflow) beyond 32768 items, the first, empty one
  /// included.
  [[nodiscard]] bool contains(std::int32_t train);

 private:
  void parse();

  std::string text_;
  std::size_t parsed_ = 0;  ///< length of the text whose items are counted and remembered
  std::size_t items_ = 0;
  bool unreadable_item_ = false;
  std::unordered_set<double> numbers_;
};

/// The station operator's telephone: the behaviour of the dialog, without a toolkit. Messages
/// stack up while it is open; "Invia" or a close discards them, and the next message opens a
/// fresh window.
class RAVELINOX_API TelephoneForm {
 public:
  /// Trains whose arrival, respectively departure, was recorded. They belong to the form, not to
  /// its window: no close clears them.
  MovementList TreniArrivati;
  MovementList TreniPartiti;

  /// Shows a message of a caller: the caller replaces the one before, the text adds a line. Both
  /// are joined as text (Null is nothing); 13 for an object. A window that cannot be made or
  /// shown, or that fails in any other way, never fails the message.
  void RiceviComunicazione(const Variant& Chiamante, const Variant& Testo);

  /// The operator's click on "Invia": discards the messages and closes the window.
  void send();
  /// The same for a close by the title bar.
  void close();

  /// Whether the window is loaded; a window that the operator closed meanwhile counts from now.
  [[nodiscard]] bool is_open();
  [[nodiscard]] const TelephoneView& view() const noexcept { return view_; }

 private:
  void notice_operator_close();

  bool open_ = false;
  TelephoneView view_;
  std::unique_ptr<TelephoneWindow> window_;
};

/// The one instance of the calling thread, made on first use and shared by every `cmdl1` on it.
[[nodiscard]] RAVELINOX_API TelephoneForm& frmTelefonoINdll();

}  // namespace ravelinox
