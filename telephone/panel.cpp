// The window's controls, their places and their little behaviour. Whatever is shown is plain text:
// a message may hold "<" or "&" as it likes.
#include "panel.hpp"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>
#include <cmath>
#include <utility>

namespace ravelinox {

namespace {

constexpr int twips_per_pixel = 15;  // at 96 dots per inch; the toolkit scales for other screens
constexpr int client_width = 5055;
constexpr int client_height = 3255;
constexpr int largest_font = 12;  // pixels; what fits a label 17 pixels high
constexpr int smallest_font = 9;

/// Places a control; lengths in twips.
void place(QWidget& control, const char* name, int left, int top, int width, int height) {
  control.setObjectName(QLatin1String(name));
  control.setGeometry(left / twips_per_pixel, top / twips_per_pixel, width / twips_per_pixel,
                      height / twips_per_pixel);
}

bool fits(const QString& text, const QFont& font, const QLabel& label) {
  return QFontMetrics(font).horizontalAdvance(text) <= label.width();
}

/// The largest font, narrowed before it gets smaller, in which all of the text can be read in the
/// label's place; the smallest if there is none.
QFont font_that_fits(const QString& text, const QLabel& label, QFont font) {
  for (int size = font.pixelSize(); size >= smallest_font; --size) {
    font.setPixelSize(size);
    for (const int stretch : {100, 90, 80}) {
      font.setStretch(stretch);
      if (fits(text, font, label)) return font;
    }
  }
  return font;
}

/// Shows a text; what does not fit even so ends in "…" and is whole in the tool tip.
void set_text(QLabel& label, const QString& text) {
  const QFont font = font_that_fits(text, label, label.parentWidget()->font());
  label.setFont(font);
  label.setText(QFontMetrics(font).elidedText(text, Qt::ElideRight, label.width()));
  label.setToolTip(fits(text, font, label) ? QString() : Qt::convertFromPlainText(text));
}

QString from_text(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

TelephonePanel::TelephonePanel(std::function<void()> answered) : answered_(std::move(answered)) {
  setWindowTitle(QStringLiteral("Telefono: chiamate in ricezione"));
  setFixedSize(client_width / twips_per_pixel, client_height / twips_per_pixel);
  QFont readable = font();
  readable.setPixelSize(largest_font);
  setFont(readable);

  place(send_, "cmdInvia", 3480, 2640, 1215, 375);
  place(reply_, "cmbMessaggio", 240, 2040, 4455, 315);
  place(separator_, "frm1", 120, 1440, 4815, 135);
  place(reply_heading_, "lbl1", 120, 1680, 1695, 255);
  place(caller_, "lblChiamante", 1560, 120, 3255, 255);
  place(messages_, "lblMessaggio", 240, 480, 4575, 855);
  place(caller_heading_, "lbl1", 120, 120, 1455, 255);
  reply_heading_.setProperty("index", 1);
  caller_heading_.setProperty("index", 0);

  for (QLabel* label : {&reply_heading_, &caller_, &caller_heading_}) {
    label->setTextFormat(Qt::PlainText);
  }
  set_text(reply_heading_, QStringLiteral("Risposta al messaggio:"));
  set_text(caller_heading_, QStringLiteral("Comunicazione da:"));
  caller_heading_.setFont(reply_heading_.font());  // the narrower place decides for both
  separator_.setFrameStyle(QFrame::HLine | QFrame::Sunken);
  set_up_reply();
  set_up_messages();

  focus_timer_.setObjectName(QStringLiteral("tmrFocus"));
  focus_timer_.setSingleShot(true);
  focus_timer_.setTimerType(Qt::PreciseTimer);  // the usual one may come a twentieth early
  focus_timer_.setInterval(TelephoneWindow::focus_delay);
  focus_timer_.callOnTimeout(this, [this] { take_focus(); });
  centre();
}

void TelephonePanel::set_up_reply() {
  send_.setText(QStringLiteral("Invia"));
  send_.setAutoDefault(true);  // Enter clicks it while it has the focus
  send_.setEnabled(false);
  connect(&send_, &QPushButton::clicked, this, [this] { send(); });

  reply_.setEditable(true);
  reply_.setInsertPolicy(QComboBox::NoInsert);  // what is typed does not join the list
  reply_.setCompleter(nullptr);
  reply_.addItem(QStringLiteral("OK"));
  reply_.setCurrentIndex(-1);
  reply_.setEditText(QStringLiteral("Selezionare risposta"));
  reply_.setEnabled(false);
}

/// Looks like a label, but what does not fit its place can be scrolled to.
void TelephonePanel::set_up_messages() {
  messages_.setReadOnly(true);
  messages_.setFocusPolicy(Qt::NoFocus);
  messages_.setFrameStyle(QFrame::NoFrame);
  messages_.document()->setDocumentMargin(0);
  messages_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QPalette label = messages_.palette();
  label.setColor(QPalette::Base, label.color(QPalette::Window));
  label.setColor(QPalette::Text, label.color(QPalette::WindowText));
  messages_.setPalette(label);
}

void TelephonePanel::present(const TelephoneView& view) {
  set_text(caller_, from_text(view.caller));
  messages_.setPlainText(from_text(view.messages));
  messages_.verticalScrollBar()->setValue(messages_.verticalScrollBar()->maximum());
  reply_.setEnabled(view.reply_enabled);
  send_.setEnabled(view.send_enabled);
  take_focus();
  if (!focus_timer_.isActive()) focus_timer_.start();
}

void TelephonePanel::take_focus() {
  if (isMinimized()) {
    showNormal();
  } else {
    show();
  }
  raise();
  activateWindow();
  if (focusWidget() == nullptr) send_.setFocus();
}

/// The window with its frame in the middle of the screen. Before the window manager has framed it
/// there is only the client area to go by.
void TelephonePanel::centre() {
  const QRect desk = screen()->geometry();
  const QRect window = frameGeometry();
  const auto middle = [](int whole, int part) {
    return static_cast<int>(
        std::lround(static_cast<float>(whole) / 2.0F - static_cast<float>(part) / 2.0F));
  };
  move(desk.left() + middle(desk.width(), window.width()),
       desk.top() + middle(desk.height(), window.height()));
}

bool TelephonePanel::event(QEvent* event) {
  // Painted for the first time: by now the frame is known.
  if (event->type() == QEvent::Paint && !std::exchange(centred_in_frame_, true)) {
    QTimer::singleShot(0, this, [this] { centre(); });
  }
  return QWidget::event(event);
}

void TelephonePanel::closeEvent(QCloseEvent* event) {
  focus_timer_.stop();
  event->accept();
  if (answered_) std::exchange(answered_, nullptr)();
}

/// The messages never hold the focus, so the keys that scroll them are read here.
void TelephonePanel::keyPressEvent(QKeyEvent* event) {
  QScrollBar* bar = messages_.verticalScrollBar();
  switch (event->key()) {
    case Qt::Key_PageUp:
      bar->triggerAction(QAbstractSlider::SliderPageStepSub);
      break;
    case Qt::Key_PageDown:
      bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

void TelephonePanel::send() {
  send_.setEnabled(false);
  messages_.clear();
  close();
}

}  // namespace ravelinox
