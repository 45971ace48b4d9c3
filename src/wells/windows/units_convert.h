#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "wells/well_units.h"

namespace Ui {
class UnitsConvert;
}

namespace velk {

/// Into which system depths are converted, and what the operator's own units are.
struct UnitChoice {
  std::int16_t to = kApiEnglish;
  UserUnits user;
};

/// Asks for the system that depths are converted into.
class UnitsConvert : public QDialog {
  Q_OBJECT

 public:
  UnitsConvert(WindowHost& host, std::int16_t from, const UserUnits& user);
  ~UnitsConvert() override;

  const UnitChoice& Answer() const { return choice_; }

 private:
  void cmdOK_Click();

  WindowHost& host_;
  std::unique_ptr<Ui::UnitsConvert> ui_;
  UnitChoice choice_;
};

}  // namespace velk
