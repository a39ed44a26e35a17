#pragma once

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "ravelinox/telephone.hpp"

namespace ravelinox {

/// The telephone's window. It shows what it is given and reports that the operator is done with
/// it; the answer that he chooses or types goes nowhere: sending is the acknowledgement.
class TelephonePanel : public QWidget {
 public:
  /// `answered` is called once, when the operator has clicked "Invia" or closed the window.
  explicit TelephonePanel(std::function<void()> answered);

  /// Shows the state in front, takes the focus and takes it once more after the delay.
  void present(const TelephoneView& view);

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void set_up_reply();
  void set_up_messages();
  void centre();
  void take_focus();
  void send();

  std::function<void()> answered_;
  // In tab order, which follows the order of their making.
  QPushButton send_{this};
  QComboBox reply_{this};
  QFrame separator_{this};
  QLabel reply_heading_{this};
  QLabel caller_{this};
  QPlainTextEdit messages_{this};
  QLabel caller_heading_{this};
  QTimer focus_timer_{this};
  bool centred_in_frame_ = false;
};

}  // namespace ravelinox
