#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "i18n/windows/window_host.h"
#include "shell/help_pages.h"

namespace Ui {
class HelpWindow;
}

namespace velk {

/// The help: contents at the left, a page at the right, a search that narrows the contents, and the way back. It blocks
/// nothing and doesn't keep the program from ending.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(WindowHost& host);
  ~HelpWindow() override;

  /// Shows the page of a numbered topic.
  void ShowTopic(int number);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int ContentsWidth() const;
  void FillContents();
  void ShowChosen();
  void MarkShown();

  std::unique_ptr<Ui::HelpWindow> ui_;
  std::vector<HelpPage> pages_;
  QUrl shown_;
};

}  // namespace velk
