// The least that a program with a main window can be, of the size of VELK's: what the start of VELK is measured
// against. With VELK_EMPTY_BARS set it has an empty menu bar, tool bar and status bar, as a main window has that
// somebody is about to fill; these alone make the toolkit read the machine's font settings.

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

int main(int argc, char** argv) {
  const QApplication qt(argc, argv);
  QMainWindow window;
  if (qEnvironmentVariableIsSet("VELK_EMPTY_BARS")) {
    window.menuBar();
    window.addToolBar(QString());
    window.statusBar();
  }
  window.resize(1280, 800);
  window.show();
  return QApplication::exec();
}
