#pragma once

#include <QDialog>
#include <QLineEdit>
#include <array>
#include <memory>

#include "i18n/windows/window_host.h"
#include "settings/user_options.h"

namespace Ui {
class frmUserOptions;
}

namespace velk {

/// The measures of the graphs. It stays open while they can't be taken, and tells why.
class frmUserOptions : public QDialog {
  Q_OBJECT

 public:
  frmUserOptions(WindowHost& host, const UserOptionTexts& shown);
  ~frmUserOptions() override;

  const UserOptions& Answer() const { return options_; }

 private:
  void cmdOK_Click();

  WindowHost& host_;
  std::unique_ptr<Ui::frmUserOptions> ui_;
  std::array<QLineEdit*, std::tuple_size_v<UserOptionTexts>> text1_;
  UserOptions options_;
};

}  // namespace velk
