#include "panel.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QProperty>
#include <QScrollBar>
#include <QTest>
#include <string>

namespace ravelinox {
namespace {

struct Desk {
  template <typename Control>
  Control& control(const char* name) {
    return *panel.findChild<Control*>(QLatin1String(name));
  }
  void receive(const std::string& text, const std::string& from = "A") {
    view.caller = from;
    view.messages += (view.messages.empty() ? "" : "\r\n") + text;
    view.reply_enabled = view.send_enabled = true;
    panel.present(view);
    QApplication::processEvents();
  }
  QString messages() { return control<QPlainTextEdit>("lblMessaggio").toPlainText(); }

  int answers = 0;
  TelephonePanel panel{[this] { ++answers; }};
  TelephoneView view;
  QLabel& caller = control<QLabel>("lblChiamante");
  QComboBox& reply = control<QComboBox>("cmbMessaggio");
  QPushButton& send = control<QPushButton>("cmdInvia");
  QTimer& timer = control<QTimer>("tmrFocus");
};

/// The controls in tab order, each with its name, its index if it has one, its place and its size.
std::string laid_out(QWidget& panel) {
  QString controls;
  for (QWidget* at = panel.nextInFocusChain(); at != &panel; at = at->nextInFocusChain()) {
    if (at->parentWidget() != &panel) continue;  // a part of a control
    const QRect place = at->geometry();
    controls += at->objectName() + at->property("index").toString();
    controls += QString(" %1,%2 ").arg(place.left()).arg(place.top());
    controls += QString("%1x%2; ").arg(place.width()).arg(place.height());
  }
  return controls.toStdString();
}

TEST(TelephonePanel, OpensWithItsControlsReadableInTheirPlaces) {
  Desk desk;
  EXPECT_EQ(desk.panel.windowTitle(), "Telefono: chiamate in ricezione");
  EXPECT_EQ(laid_out(desk.panel),
            "cmdInvia 232,176 81x25; cmbMessaggio 16,136 297x21; frm1 8,96 321x9; "
            "lbl11 8,112 113x17; lblChiamante 104,8 217x17; lblMessaggio 16,32 305x57; "
            "lbl10 8,8 97x17; ");
  EXPECT_EQ(desk.reply.currentText(), "Selezionare risposta");
  EXPECT_EQ(desk.reply.count(), 1);
  EXPECT_EQ(desk.reply.itemText(0), "OK");
  EXPECT_EQ(desk.send.text(), "Invia");
  EXPECT_FALSE(desk.reply.isEnabled() || desk.send.isEnabled());
  EXPECT_EQ(desk.caller.text() + desk.messages(), "");
  for (const QLabel* heading : desk.panel.findChildren<QLabel*>("lbl1")) {
    EXPECT_LE(heading->sizeHint().width(), heading->width()) << heading->text().toStdString();
    EXPECT_LE(heading->sizeHint().height(), heading->height()) << heading->text().toStdString();
    EXPECT_GE(heading->font().pixelSize(), 9);
  }
}

TEST(TelephonePanel, ShowsCallerAndMessagesAsPlainText) {
  Desk desk;
  desk.receive("<b>1</b> & è", "Dirigente <i>centrale</i>");
  desk.receive("2", "B & C");
  EXPECT_EQ(desk.caller.text(), "B & C");
  EXPECT_EQ(desk.caller.textFormat(), Qt::PlainText);
  EXPECT_EQ(desk.messages(), QString::fromUtf8("<b>1</b> & è\n2"));
  desk.receive("3", "Dirigente <i>centrale</i>" + std::string(100, 'x'));
  EXPECT_TRUE(desk.caller.toolTip().contains("&lt;i&gt;"));
}

TEST(TelephonePanel, MessagesBeyondItsPlaceAreScrolledTo) {
  Desk desk;
  QScrollBar& bar = *desk.control<QPlainTextEdit>("lblMessaggio").verticalScrollBar();
  desk.receive("short");
  EXPECT_EQ(bar.maximum(), 0);
  desk.receive(std::string(400, 'x'));  // not even a place to break the line
  EXPECT_GT(bar.maximum(), 0);
  EXPECT_EQ(bar.value(), bar.maximum());
  QTest::keyClick(&desk.send, Qt::Key_PageUp);
  EXPECT_LT(bar.value(), bar.maximum());
  desk.receive("new");
  EXPECT_EQ(bar.value(), bar.maximum());
}

TEST(TelephonePanel, AnAnswerTypedOrChosenChangesNothing) {
  Desk desk;
  desk.receive("1");
  QTest::keyClicks(&desk.reply, "no");
  QTest::keyClick(&desk.reply, Qt::Key_Return);
  EXPECT_EQ(desk.reply.count(), 1);
  QTest::keyClick(&desk.reply, Qt::Key_Down);
  EXPECT_EQ(desk.reply.currentText(), "OK");
  desk.receive("2");
  EXPECT_EQ(desk.reply.currentText(), "OK");
  EXPECT_EQ(desk.messages(), "1\n2");
  EXPECT_EQ(desk.answers, 0);
}

TEST(TelephonePanel, TheOperatorIsDoneOnceHoweverHeSaysSo) {
  void (*const ways[])(Desk&) = {
      [](Desk& at) {
        QTest::mouseClick(&at.send, Qt::LeftButton);
        EXPECT_EQ(at.messages(), "");
        EXPECT_FALSE(at.send.isEnabled());
      },
      [](Desk& at) { QTest::keyClick(at.panel.focusWidget(), Qt::Key_Space); },
      [](Desk& at) { QTest::keyClick(at.panel.focusWidget(), Qt::Key_Enter); },
      [](Desk& at) { at.panel.close(); },
  };
  for (const auto& way : ways) {
    Desk fresh;
    fresh.receive("1");
    way(fresh);
    EXPECT_EQ(fresh.answers, 1) << &way - ways;
    EXPECT_FALSE(fresh.panel.isVisible() || fresh.timer.isActive()) << &way - ways;
  }
}

TEST(TelephonePanel, ComesBackOnceFiveSecondsAfterTheFirstMessage) {
  Desk desk;
  int starts_and_ends = 0;
  const auto watch = desk.timer.bindableActive().onValueChanged([&] { ++starts_and_ends; });
  desk.receive("1");
  desk.receive("2");
  EXPECT_TRUE(desk.timer.isActive());
  EXPECT_EQ(starts_and_ends, 1);
  EXPECT_EQ(desk.timer.interval(), 5000);
  desk.panel.showMinimized();
  QTimerEvent tick(desk.timer.timerId());
  QCoreApplication::sendEvent(&desk.timer, &tick);
  EXPECT_FALSE(desk.panel.isMinimized());
  EXPECT_TRUE(desk.panel.isActiveWindow());
  EXPECT_FALSE(desk.timer.isActive());
}

}  // namespace
}  // namespace ravelinox

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
