#pragma once

#include <QDialog>
#include <memory>

#include "i18n/translation.h"
#include "instruments/setup/protocol_dialogs.h"

namespace Ui {
class frmHPTHoneywellEZtrend;
}

namespace velk {

/// Edits where the networked unit is.
class frmHPTHoneywellEZtrend : public QDialog {
  Q_OBJECT

 public:
  frmHPTHoneywellEZtrend(const UnitAddress& address, const Translation& translation, QWidget* parent = nullptr);
  ~frmHPTHoneywellEZtrend() override;

  /// What the boxes hold, without blanks at their ends.
  UnitAddress Address() const;

 private:
  std::unique_ptr<Ui::frmHPTHoneywellEZtrend> ui_;
};

}  // namespace velk
