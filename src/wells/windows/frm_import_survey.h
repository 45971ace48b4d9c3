#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"
#include "wells/live_survey.h"

class QLineEdit;

namespace Ui {
class frmImportSurvey;
}

namespace velk {

/// What was chosen for a live survey.
struct LiveSurveyAnswer {
  bool stops = false;  ///< the one that runs is to end
  LiveSurveyChoice choice;
};

/// Matches the fields of a log with what a live survey needs.
class frmImportSurvey : public QDialog {
  Q_OBJECT

 public:
  /// `fields` are those of the log. A field that has the name of a quantity is taken for it, where `choice` has none.
  /// While a survey runs it can be stopped, and Enter leaves it alone.
  frmImportSurvey(WindowHost& host, const std::vector<std::string>& fields, const LiveSurveyChoice& choice,
                  bool isRunning);
  ~frmImportSurvey() override;

  const LiveSurveyAnswer& Answer() const { return answer_; }

 private:
  void Match(const std::vector<std::string>& fields, const SurveyFields& chosen);
  void cmdAssign_Click(std::size_t quantity);
  void cmdOK_Click();
  void Command1_Click();

  WindowHost& host_;
  std::unique_ptr<Ui::frmImportSurvey> ui_;
  std::array<QLineEdit*, kSurveyQuantities> boxes_{};
  LiveSurveyAnswer answer_;
};

}  // namespace velk
