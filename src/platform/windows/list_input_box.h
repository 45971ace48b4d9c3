#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "base/language.h"
#include "platform/dialogs/dialogs.h"

namespace Ui {
class ListInputBox;
}

namespace velk {

/// Chooses a text from a list; with a text box, into which the list's entries go, where another may be entered.
class ListInputBox : public QDialog {
  Q_OBJECT

 public:
  ListInputBox(const ShownListQuestion& question, const Language& language, QWidget* parent = nullptr);
  ~ListInputBox() override;

  /// The chosen or entered text, blanks included; empty unless the window was left by OK.
  const std::string& Chosen() const { return chosen_; }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void FitToTexts();
  /// -1 where no entry is selected.
  int ChosenRow() const;
  void List1_Click();
  void Text1_Change();
  void cmdOK_Click();
  std::string Text() const;

  std::unique_ptr<Ui::ListInputBox> ui_;
  const ShownListQuestion question_;
  std::string chosen_;
};

}  // namespace velk
