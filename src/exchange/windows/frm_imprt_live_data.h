#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exchange/foreign_tables.h"
#include "exchange/live_import.h"
#include "i18n/windows/window_host.h"
#include "platform/platform.h"

class QLabel;

namespace Ui {
class frmImprtLiveData;
}

namespace velk {

/// What the choice of a followed database works with.
struct LiveChoiceAccess {
  Platform platform;
  std::string directory;  ///< where the choice of a file begins
  JetTools tools;
  std::function<void(const LiveImport& live)> store;  ///< brings what was chosen to the disk, or raises why not
};

/// Chooses the database of another program that is followed: a table of it, the fields of its date and its time, those
/// that are drawn, and how. O.K. stores it.
class frmImprtLiveData : public QDialog {
  Q_OBJECT

 public:
  frmImprtLiveData(WindowHost& host, LiveChoiceAccess access, const LiveImport& stored);
  ~frmImprtLiveData() override;

  const LiveImport& Answer() const { return live_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Bind();
  void cmdGetFileName_Click();
  /// Reads what tables a database has; the present ones stay where it can't be read. Gives whether it could.
  bool ReadTables(const char* procedure, const std::string& file);
  void ShowTables();
  void cmbAvilableTables_Click();
  void ShowFields();
  void cmdSelect_Click();
  void cmdRemove_Click();
  void MoveTo(std::string& field);
  void lstSelected_Properties();
  void cmdOK1_Click();
  /// What is wrong with the choice; empty where nothing is.
  OperatorText Fault() const;
  int TypeOf(const std::string& field) const;
  void UpdateKeys();

  WindowHost& host_;
  std::unique_ptr<Ui::frmImprtLiveData> ui_;
  const LiveChoiceAccess access_;
  LiveImport live_;
  std::vector<ForeignTable> tables_;
  std::vector<LiveField> available_;  ///< in the order of their list
};

}  // namespace velk
