// Draws the window as it stands with two messages, without a display: telephone-picture FILE.
#include <QApplication>
#include <QPixmap>
#include <cstdlib>

#include "panel.hpp"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  ravelinox::TelephonePanel panel(nullptr);
  panel.present({"Dirigente Coordinatore Movimento",
                 "Oggi il treno 2345 è soppresso.\r\n"
                 "Applicare marcia prioritaria al treno 10271. ",
                 true, true});
  QApplication::processEvents();
  return argc == 2 && panel.grab().save(QString::fromLocal8Bit(argv[1])) ? EXIT_SUCCESS
                                                                         : EXIT_FAILURE;
}
