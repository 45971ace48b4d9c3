#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "i18n/windows/window_host.h"
#include "instruments/unit/unit_grid.h"
#include "instruments/windows/unit_model.h"
#include "platform/windows/grid_keys.h"

namespace Ui {
class OrbenSettings;
}

namespace velk {

/// What the window of a unit's table works with. The work on the unit shows its own boxes and lets events run.
struct OrbenSettingsWork {
  std::string unit;  ///< its name, as templates carry it
  UnitRows table;
  bool wasRead = true;                        ///< the table is the unit's
  std::string directory;                      ///< where templates are looked for at first
  std::function<bool(const UnitRows&)> send;  ///< whether the unit has it
  std::function<void()> reset;
  std::function<void()> setClock;
  std::function<void(const std::string& command)> sendCommand;
  std::function<void()> tools;
  std::function<void()> cancel;  ///< ends the work that is under way
  std::function<std::string()> clock;
  std::function<std::string()> issued;
  std::function<void()> beep;
};

/// The table of settings of an own unit: edited here, sent to the unit, kept in templates.
class OrbenSettings : public QDialog {
  Q_OBJECT

 public:
  OrbenSettings(WindowHost& host, OrbenSettingsWork work);
  ~OrbenSettings() override;

  /// The table as it was left.
  const UnitRows& Answer() const { return grid_.Table(); }

  /// What is under way on the unit is ended first. Asks where changes would be lost.
  void done(int result) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FitGrid();
  void ConnectButtons();
  void ConnectGrid();
  void Command1_Click();
  void Command3_Click();
  void Command4_Click();
  void Command8_Click();
  void cmdTools_Click();
  void cmdOpen_Click();
  void cmdSave_Click();
  void cmdSaveAs_Click();
  /// Work on the unit; nothing else can be begun meanwhile.
  void Run(const std::function<void()>& work);
  void SetBusy(bool busy);
  /// Whether every cell can be taken; else its fault is shown.
  bool IsSound();
  void Write(const std::string& path);
  bool MaySend();
  bool MayLeave();
  void ShowTemplate(const std::string& path);
  void Changed();
  void ShowRemark();
  void ShowUnit();
  QString Text(const OperatorText& text) const;
  void StoreOpenEditor();

  WindowHost& host_;
  std::unique_ptr<Ui::OrbenSettings> ui_;
  const OrbenSettingsWork work_;
  UnitGrid grid_;
  UnitModel model_;
  GridKeys* keys_ = nullptr;  ///< the grid's
  QTimer refresh_;
  std::string template_;  ///< its path
  UnitRows unitHas_;      ///< as it was read or sent; empty where the unit may have changed it
  bool busy_ = false;
  std::optional<int> closing_;  ///< the result to close with, once the work has ended
};

}  // namespace velk
