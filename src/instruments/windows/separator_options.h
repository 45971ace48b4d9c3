#pragma once

#include <QRadioButton>
#include <QWidget>
#include <memory>
#include <vector>

#include "instruments/setup/separators.h"
#include "platform/dialogs/dialogs.h"

namespace Ui {
class SeparatorOptions;
}

namespace velk {

/// The options of Delimiter and Terminator, as FormattedData and Intermittent show them.
class SeparatorOptions : public QWidget {
  Q_OBJECT

 public:
  explicit SeparatorOptions(QWidget* parent = nullptr);
  ~SeparatorOptions() override;

  /// Shows what is stored. `dialogs` asks for a delimiter that is typed; it outlives this part of the window.
  void Show(const Separators& separators, Dialogs& dialogs);

  const Separators& Chosen() const { return separators_; }

 private:
  void optDelimiter_Click(int option);
  void UpdateDelimiter();
  /// Asks for the character; what was chosen before stays where none is given.
  void TypeDelimiter();

  std::unique_ptr<Ui::SeparatorOptions> ui_;
  std::vector<QRadioButton*> optDelimiter_;
  std::vector<QRadioButton*> optTerminator_;
  Dialogs* dialogs_ = nullptr;
  Separators separators_;
};

}  // namespace velk
