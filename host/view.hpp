#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/board.hpp"
#include "host/console.hpp"
#include "host/dispatchers.hpp"
#include "host/pacing.hpp"
#include "host/traffic.hpp"

namespace ravelinox::host {

/// How a day is shown while it runs.
class View {
 public:
  virtual ~View() = default;

  virtual void message(Timestamp now, const Message& message) = 0;
  virtual void announcement(Timestamp now, const std::string& text) = 0;
  /// A movement at the own station, and what its signal shows, if the station has a route for it.
  virtual void movement(const Movement& movement, const std::optional<std::string>& signal) = 0;
  virtual void failure(Timestamp now, const std::string& sentence) = 0;
  /// The clock has moved. The board costs a reading, so the view asks for it when it draws.
  virtual void tick(Timestamp now, const std::function<Board()>& board) = 0;
};

/// "06:12  2345 from Firenze arrived at platform 3, 4 min late; A1 shows RG"
[[nodiscard]] std::string movement_line(const Movement& movement,
                                        const std::optional<std::string>& signal);
/// "06:00  Dirigente centrale: Oggi il treno 2345 è soppresso."
[[nodiscard]] std::string message_line(Timestamp now, const Message& message);

/// "06:10  Loudspeaker: Il treno Regionale 2345, …"
[[nodiscard]] std::string announcement_line(Timestamp now, const std::string& text);

/// One line for each thing that happens, and the board every half hour. Depends on simulated time
/// alone, so that the same seed gives the same lines.
class PlainView : public View {
 public:
  PlainView(const Console& console, Timestamp start) : console_(console), next_board_(start) {}
  void message(Timestamp now, const Message& message) override;
  void announcement(Timestamp now, const std::string& text) override;
  void movement(const Movement& movement, const std::optional<std::string>& signal) override;
  void failure(Timestamp now, const std::string& sentence) override;
  void tick(Timestamp now, const std::function<Board()>& board) override;

 private:
  Console console_;
  Timestamp next_board_;
};

/// A page redrawn in place on a terminal, which has its old content back afterwards. The latest
/// failures, which would be lost with the page, are said once more at the end.
class TerminalView : public View {
 public:
  TerminalView(const Console& console, std::string title);
  TerminalView(const TerminalView&) = delete;
  TerminalView& operator=(const TerminalView&) = delete;
  ~TerminalView() override;

  void message(Timestamp now, const Message& message) override;
  void announcement(Timestamp now, const std::string& text) override;
  void movement(const Movement& movement, const std::optional<std::string>& signal) override;
  void failure(Timestamp now, const std::string& sentence) override;
  void tick(Timestamp now, const std::function<Board()>& board) override;

 private:
  [[nodiscard]] std::vector<std::string> page(Timestamp now, const Board& board,
                                              std::size_t height) const;

  Console console_;
  std::string title_;
  std::deque<std::string> messages_, announcements_, movements_, failures_;
  RealTimeLimit redraw_;
};

[[nodiscard]] std::unique_ptr<View> make_view(const Console& console, const std::string& title,
                                              Timestamp start);

}  // namespace ravelinox::host
