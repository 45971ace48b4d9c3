// velk_clipboard_owner: another program that holds a text in the clipboard, as a spreadsheet does behind Copy: reads it
// from standard input, prints "ready" once it is there, and ends when somebody else copies something.

#include <QClipboard>
#include <QGuiApplication>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
  const QGuiApplication qt(argc, argv);
  const std::string text{std::istreambuf_iterator<char>(std::cin), {}};
  QClipboard* clipboard = QGuiApplication::clipboard();
  clipboard->setText(QString::fromStdString(text));
  QObject::connect(clipboard, &QClipboard::dataChanged, &qt, [clipboard] {
    if (!clipboard->ownsClipboard()) QGuiApplication::quit();
  });
  std::puts("ready");
  std::fflush(stdout);
  return QGuiApplication::exec();
}
