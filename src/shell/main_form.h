#pragma once

#include <QLabel>
#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "base/language.h"
#include "base/text_qt.h"
#include "model/main_view.h"
#include "platform/windows/screen_refresh.h"
#include "shell/commands.h"

class QBoxLayout;
class QMdiArea;
class QToolBar;

namespace Ui {
class MainForm;
}

namespace velk {

class FirstSteps;
class SpeedBar;
class StatusPanel;

/// The main window: menus, toolbar, status bar and the area of the graph windows. It shows what it is told; what
/// a choice runs is bound to its commands by the rooms that have the work.
class MainForm : public QMainWindow, public MainView {
  Q_OBJECT

 public:
  /// All outlive the window; panels that change with each sample are shown with `refresh`.
  MainForm(const Language& language, const Session& session, const ScreenRefresh& refresh);
  ~MainForm() override;

  QMdiArea& GraphArea();
  /// A menu item by its name; null where there is none.
  QAction* MenuItem(std::string_view item) const;
  /// A toolbar button by its key; null where there is none.
  QAction* Button(std::string_view key) const;
  QToolBar& Toolbar();
  Commands& Table() { return *commands_; }
  FirstSteps& Guide() { return *firstSteps_; }
  QString Panel(int panel) const;
  /// A text in the window's language.
  QString Shown(const OperatorText& text) const { return ToQt(language_.In(text)); }

  /// Asked when the frame is about to close; false keeps it.
  std::function<bool()> onQueryUnload;
  /// The window stands elsewhere, or has another size: told as a setting.
  std::function<void(const std::string& place)> onPlaced;
  /// The operator has moved the speed bar.
  std::function<void(int speed)> onSpeedChange;

  /// Puts the window where it was left, within the screens that there are.
  void PlaceOnScreen(const std::string& place);

  void SetPanel(int panel, const OperatorText& text) override;
  void ShowData(const OperatorText& text, bool warns) override;
  void ShowRecording(const OperatorText& text, const OperatorText& toolTip) override;
  void ShowStatus(const MessageText& status) override;
  void SetMenuEnabled(std::string_view item, bool enabled) override;
  void SetMenuCaption(std::string_view item, const OperatorText& caption) override;
  void SetButtonImage(std::string_view key, int image) override;
  int ButtonImage(std::string_view key) const override;
  void SetButtonVisible(std::string_view key, bool visible) override;
  void SetButtonEnabled(std::string_view key, bool enabled) override;
  void SetButtonToolTip(std::string_view key, const OperatorText& text) override;
  void ShowSpeed(int speed) override;
  void ResetCaption() override;
  void SetHourglass(bool on) override;
  void Repaint() override;
  void ShowDue() override { refresh_.ShowDue(); }
  void Beep() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void TellPlace();
  QBoxLayout& RoomAboveGraphs();
  void BuildToolbar();
  void ColourDataPanel();
  void KeepCaption(const QString& title);
  QAction* AddSpeedBar(const char* toolTip);
  void BuildStatusBar();
  void CaptionStart(const MessageText& caption);
  void ShowPanel(int panel, const std::string& text);
  void ShowPanelNow(int panel, const std::string& text);
  void ShowPending(WindowStrips& strips);

  const Language& language_;
  std::unique_ptr<Ui::MainForm> ui_;
  ActionsByName menuItems_;
  ActionsByName buttons_;
  std::unique_ptr<Commands> commands_;
  std::map<std::string, int, std::less<>> images_;
  SpeedBar* speedBar_ = nullptr;
  FirstSteps* firstSteps_ = nullptr;
  StatusPanel* panels_[9] = {};
  std::map<int, std::string> told_;     ///< last, of the panels that change with every sample
  std::map<int, std::string> pending_;  ///< of the same, until the screen follows
  ScreenRefresh::Part refresh_;
  bool hourglass_ = false;
  bool dataWarns_ = false;
  QString caption_;
};

}  // namespace velk
