#pragma once

#include <QObject>

#include "shell/help_window.h"

namespace velk {

/// Opens the help at the right page: from the menu and the toolbar at its beginning, by F1 at the topic of the window
/// that has the keyboard.
class Help : public QObject {
  Q_OBJECT

 public:
  /// Listens for F1 in all of the program's windows from now on.
  explicit Help(WindowHost& windows);

  void Open(int number);
  /// The topic of a widget: the number in its property "helpTopic", or in that of what it stands in, or of what has the
  /// keyboard in the window below; the first topic where none is named.
  static int TopicOf(const QWidget* widget);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  WindowHost& windows_;
};

}  // namespace velk
