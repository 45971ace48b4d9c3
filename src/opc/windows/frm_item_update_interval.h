#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"

namespace Ui {
class frmItemUpdateInterval;
}

namespace velk {

/// How often the values of the list are shown anew.
class frmItemUpdateInterval : public QDialog {
  Q_OBJECT

 public:
  /// Milliseconds.
  frmItemUpdateInterval(WindowHost& host, int interval);
  ~frmItemUpdateInterval() override;

  int Answer() const { return interval_; }

 private:
  void OkButton_Click();

  WindowHost& host_;
  std::unique_ptr<Ui::frmItemUpdateInterval> ui_;
  int interval_;
};

}  // namespace velk
