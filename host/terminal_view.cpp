// The live page. It lies on the terminal's second screen, so that nothing of it stays behind, and
// is written in one piece, line over line, so that it does not flicker.
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <sstream>

#include "host/text_table.hpp"
#include "host/view.hpp"

namespace ravelinox::host {
namespace {

constexpr std::string_view enter_page = "\x1b[?1049h\x1b[?25l";  // second screen, no cursor
constexpr std::string_view leave_page = "\x1b[?25h\x1b[?1049l";
constexpr std::string_view go_home = "\x1b[H";
constexpr std::string_view clear_line = "\x1b[K";
constexpr std::string_view clear_below = "\x1b[J";

constexpr std::size_t notes_kept = 5;

struct PageSize {
  std::size_t width = 80;
  std::size_t height = 24;
};

PageSize page_size() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
    return {};
  }
  return {size.ws_col, size.ws_row};
}

void keep(std::deque<std::string>& notes, std::string note) {
  notes.push_back(std::move(note));
  if (notes.size() > notes_kept) notes.pop_front();
}

void add_section(std::vector<std::string>& page, const std::string& title, const auto& lines) {
  page.emplace_back();
  page.push_back(title);
  for (const std::string& line : lines) page.push_back("  " + line);
}

}  // namespace

TerminalView::TerminalView(const Console& console, std::string title)
    : console_(console), title_(std::move(title)), redraw_(std::chrono::milliseconds(150)) {
  console_.out << enter_page << std::flush;
}

TerminalView::~TerminalView() {
  console_.out << leave_page << std::flush;
  for (const std::string& line : failures_) console_.err << line << '\n';
}

void TerminalView::message(Timestamp now, const Message& message) {
  keep(messages_, message_line(now, message));
}

void TerminalView::announcement(Timestamp now, const std::string& text) {
  keep(announcements_, announcement_line(now, text));
}

void TerminalView::movement(const Movement& movement, const std::optional<std::string>& signal) {
  keep(movements_, movement_line(movement, signal));
}

void TerminalView::failure(Timestamp now, const std::string& sentence) {
  keep(failures_, show_time(now) + "  " + sentence);
}

void TerminalView::tick(Timestamp now, const std::function<Board()>& board) {
  if (!redraw_.due()) return;
  const PageSize size = page_size();
  std::vector<std::string> lines = page(now, board(), size.height);
  lines.resize(std::min(lines.size(), size.height));
  std::ostringstream drawing;
  drawing << go_home;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    // A full last line must not scroll the page.
    if (i != 0) drawing << "\r\n";
    const bool wide = display_width(lines[i]) > size.width;
    drawing << (wide ? fit(lines[i], size.width) : lines[i]) << clear_line;
  }
  drawing << clear_below;
  console_.out << drawing.str() << std::flush;
}

std::vector<std::string> TerminalView::page(Timestamp now, const Board& board,
                                            std::size_t height) const {
  // Titles, blank lines and notes come first; the two boards share what is left.
  const std::size_t fixed =
      15 + messages_.size() + movements_.size() + announcements_.size() + failures_.size();
  const std::size_t trains = height > fixed + 4 ? (height - fixed) / 2 : 2;
  std::vector<std::string> lines{title_ + "   " + show_moment(now)};
  add_section(lines, "DEPARTURES", board_lines(board, Event::departure, trains));
  add_section(lines, "ARRIVALS", board_lines(board, Event::arrival, trains));
  add_section(lines, "MOVEMENTS", movements_);
  add_section(lines, "LOUDSPEAKER", announcements_);
  add_section(lines, "TELEPHONE", messages_);
  if (!failures_.empty()) add_section(lines, "FAILURES", failures_);
  return lines;
}

}  // namespace ravelinox::host
