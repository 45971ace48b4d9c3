#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"
#include "wells/survey_grid.h"
#include "wells/well.h"
#include "wells/windows/survey_model.h"

namespace Ui {
class EditSur;
}

namespace velk {

class GridKeys;

/// What the survey's editor needs besides the well.
struct SurveyAccess {
  std::string directory;  ///< where the choice of a file begins
  std::function<void()> beep;
  std::function<void(const UserUnits&)> keepUnits;  ///< the operator's own units were changed
  /// The rows that the editor was opened with are in this file; empty: in none. However the editor is left.
  std::function<void(const std::string&)> keepFile;
  std::function<bool()> isLive;  ///< a live survey makes the well anew every few seconds
};

/// The editor of the survey. It works on a well of its own: Answer() is that well once OK has computed its path.
class EditSur : public QDialog {
  Q_OBJECT

 public:
  EditSur(WindowHost& host, Well well, SurveyAccess access);
  ~EditSur() override;

  const Well& Answer() const { return well_; }

  void done(int result) override;

 private:
  /// What stands beside the rows of a version of the grid.
  struct Beside {
    std::int64_t version;
    std::vector<WellSection> sections;
    bool isSameSurvey;  ///< the next version is that survey, too: its file stays
    std::string surveyFile, wellFile;
    QString title;
  };

  void ConnectButtons();
  void ConnectKeys();
  void ConnectMenu();

  void cmdNew_Click();
  void cmdOpen_Click();
  void cmdSave_Click();
  void cmdSaveAs_Click();
  void cmdConvert_Click();
  void cmdInsertRow_Click();
  void cmdDeleteRow_Click();
  void cmdOK_Click();
  void Option1_Click(std::int16_t system);
  void mnuUndo_Click();
  void ConvertDepths(double factor, std::int16_t units);

  void Paste(const CellRange& cells);
  void Open(const std::string& path);
  void TakeFile(const SurveyFile& file, const std::string& path);
  void Save(const std::string& path);
  void FollowOwnRows(const std::string& path);
  Beside Present(bool isSameSurvey) const;
  bool TellLiveSurvey();
  bool TellFault();
  void Changed();
  void ShowRemark();
  void ShowUnits();
  void ShowTitle(const std::string& path);
  void AllowSave();
  QString Text(const OperatorText& text) const;
  std::string Directory() const;

  WindowHost& host_;
  std::unique_ptr<Ui::EditSur> ui_;
  Well well_;
  const SurveyAccess access_;
  SurveyGrid grid_;
  SurveyModel model_;
  GridKeys* keys_ = nullptr;    ///< the grid's
  std::vector<Beside> before_;  ///< what Undo brings back with the rows
  std::int64_t inFile_;         ///< version of the grid whose survey is in a file
  std::string ownFile_;         ///< with the rows that the editor was opened with
};

}  // namespace velk
