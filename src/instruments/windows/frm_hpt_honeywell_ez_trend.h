#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "instruments/setup/edit_serial_port.h"

namespace Ui {
class frmHPTHoneywellEZtrend;
}

namespace velk {

/// Edits where the networked unit is.
class frmHPTHoneywellEZtrend : public QDialog {
  Q_OBJECT

 public:
  frmHPTHoneywellEZtrend(WindowHost& host, const UnitAddress& address);
  ~frmHPTHoneywellEZtrend() override;

  /// What the boxes hold, without blanks at their ends.
  UnitAddress Answer() const;

 private:
  std::unique_ptr<Ui::frmHPTHoneywellEZtrend> ui_;
};

}  // namespace velk
