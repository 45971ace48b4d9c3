#pragma once

#include <QDialog>
#include <QLineEdit>
#include <array>
#include <functional>
#include <memory>

#include "i18n/translation.h"
#include "settings/settings_questions.h"

namespace Ui {
class frmUserOptions;
}

namespace velk {

/// The measures of the graphs.
class frmUserOptions : public QDialog {
  Q_OBJECT

 public:
  using Accept = std::function<bool(const UserOptionTexts&)>;

  /// `accept` is asked at O.K.; the form stays open while it gives false.
  frmUserOptions(const Translation& translation, const UserOptionTexts& shown, Accept accept,
                 QWidget* parent = nullptr);
  ~frmUserOptions() override;

 private:
  void cmdOK_Click();

  std::unique_ptr<Ui::frmUserOptions> ui_;
  std::array<QLineEdit*, std::tuple_size_v<UserOptionTexts>> text1_;
  Accept accept_;
};

}  // namespace velk
