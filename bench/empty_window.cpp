// The least that a program with a main window can be: what the start of VELK is measured against.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  const QApplication qt(argc, argv);
  QMainWindow window;
  window.show();
  return QApplication::exec();
}
