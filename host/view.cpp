// The lines that both views share, and the plain one.
#include "host/view.hpp"

namespace ravelinox::host {
namespace {

constexpr Timestamp board_interval = 30 * minute;
constexpr std::size_t board_length = 8;

std::string punctuality(Timestamp delay) {
  if (delay >= minute) return ", " + std::to_string(delay / minute) + " min late";
  if (delay <= -minute) return ", " + std::to_string(-delay / minute) + " min early";
  return ", on time";
}

std::string deed(const Movement& movement) {
  const std::string platform =
      movement.stop.track.empty() ? "" : " platform " + movement.stop.track;
  if (movement.stop.passes()) {
    return " from " + movement.origin + " to " + movement.terminus + " passed";
  }
  if (movement.event == Event::arrival) {
    return " from " + movement.origin + " arrived" + (platform.empty() ? "" : " at" + platform);
  }
  return " to " + movement.terminus + " left" + platform;
}

}  // namespace

std::string movement_line(const Movement& movement, const std::optional<std::string>& signal) {
  return show_time(movement.time) + "  " + std::to_string(movement.train) + deed(movement) +
         punctuality(movement.delay()) + (signal ? "; " + *signal : "");
}

std::string message_line(Timestamp now, const Message& message) {
  return show_time(now) + "  " + message.caller + ": " + message.text;
}

std::string announcement_line(Timestamp now, const std::string& text) {
  return show_time(now) + "  Loudspeaker: " + text;
}

void PlainView::message(Timestamp now, const Message& message) {
  console_.out << message_line(now, message) << '\n';
}

void PlainView::announcement(Timestamp now, const std::string& text) {
  console_.out << announcement_line(now, text) << '\n';
}

void PlainView::movement(const Movement& movement, const std::optional<std::string>& signal) {
  console_.out << movement_line(movement, signal) << '\n';
}

void PlainView::failure(Timestamp now, const std::string& sentence) {
  console_.err << show_time(now) << "  " << sentence << '\n';
}

void PlainView::tick(Timestamp now, const std::function<Board()>& board) {
  if (now < next_board_) return;
  next_board_ = now + board_interval;
  const Board shown = board();
  std::ostream& out = console_.out;
  out << '\n' << show_moment(now) << '\n';
  for (const Event side : {Event::departure, Event::arrival}) {
    for (const std::string& line : board_lines(shown, side, board_length)) {
      out << "  " << line << '\n';
    }
  }
  out << '\n' << std::flush;
}

std::unique_ptr<View> make_view(const Console& console, const std::string& title, Timestamp start) {
  if (console.terminal) return std::make_unique<TerminalView>(console, title);
  return std::make_unique<PlainView>(console, start);
}

}  // namespace ravelinox::host
