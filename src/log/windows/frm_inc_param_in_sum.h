#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <array>
#include <memory>
#include <vector>

#include "i18n/windows/window_host.h"
#include "log/job_questions.h"

namespace Ui {
class frmIncParamInSum;
}

namespace velk {

/// Asks what a row of the summary report holds: a check box `chk_<i>` for each channel and four names of additional
/// fields.
class frmIncParamInSum : public QDialog {
  Q_OBJECT

 public:
  frmIncParamInSum(WindowHost& host, const SummaryInclusion& inclusion);
  ~frmIncParamInSum() override;

  /// What was chosen with cmdClose; what came in where the window was closed otherwise.
  const SummaryInclusion& Answer() const { return inclusion_; }

 private:
  void AddCheckBoxes();
  void FitToScreen();
  void cmdClose_Click();

  std::unique_ptr<Ui::frmIncParamInSum> ui_;
  SummaryInclusion inclusion_;
  std::vector<QCheckBox*> chk_;  ///< in the order of the inclusion's parameters
  std::array<QLineEdit*, kMaxExtraFields> text1_;
};

}  // namespace velk
