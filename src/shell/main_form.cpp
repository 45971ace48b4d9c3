#include "shell/main_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMenu>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include "base/text_qt.h"
#include "shell/icons.h"
#include "shell/not_built.h"
#include "shell/path_label.h"
#include "shell/texts.h"
#include "shell/ui_main_form.h"

/// A static library's resources have to be asked for, from outside any namespace.
static void LoadIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace velk {

namespace {

constexpr int kRefreshMs = 33;
constexpr int kFilePanel = 2;
constexpr int kTimePanel = 4;

/// The toolbar from left to right; Alarms has to be the 17th. An empty key is a separator.
struct ToolbarButton {
  const char* key;
  int image;
  const char* toolTip;
  const char* followsMenu;  ///< menu item whose state the button shares, or null
};

constexpr ToolbarButton kToolbar[] = {
    {"Record", image::Record, "Record Data To...", "mnuFileRecord"},
    {"PlayBack", image::PlayBack, "PlayBack File", "mnuFilePlayback"},
    {"Exit", image::Exit, "Exit", "mnuFileExit"},
    {"", 0, "", nullptr},
    {"Acquire", image::Acquire, "Connect to Hardware", nullptr},
    {"", 0, "", nullptr},
    {"Edit", image::Edit, "Edit Settings", nullptr},
    {"Tools", image::Tools, "Tools", nullptr},
    {"", 0, "", nullptr},
    {"Help", image::Help, "VELK Help Contents", nullptr},
    {"", 0, "", nullptr},
    {"Pause", image::PauseStopped, "Start", nullptr},
    {"Stop", image::Stop, "Stop", nullptr},
    {"RecordToDB", image::RecordOff, "Record To Database", nullptr},
    {"", 0, "", nullptr},
    {"ScrollBar", 0, "Adjust Playback Speed", nullptr},
    {"Alarms", image::Alarms, "Alarms Triggered", nullptr},
    {"", 0, "", nullptr},
    {"connect", image::ConnectOff, "Connected", nullptr},
    {"disconnect", image::DisconnectOff, "Disconnected", nullptr},
    {"Command1", image::Alarms, "Alarms Triggered", nullptr},
};

bool IsMenuItem(const QObject& object) {
  return object.objectName().startsWith(QLatin1String("mnu"));
}

QAction* Find(const std::map<std::string, QAction*, std::less<>>& actions, std::string_view name) {
  const auto found = actions.find(name);
  return found == actions.end() ? nullptr : found->second;
}

}  // namespace

MainForm::MainForm(const Language& language) : language_(language), ui_(std::make_unique<Ui::MainForm>()) {
  LoadIcons();
  QApplication::setWindowIcon(Icon("velk"));
  ui_->setupUi(this);
  for (QAction* action : findChildren<QAction*>())
    if (IsMenuItem(*action)) menuItems_[FromQt(action->objectName())] = action;
  for (QMenu* menu : findChildren<QMenu*>())
    if (IsMenuItem(*menu)) menuItems_[FromQt(menu->objectName())] = menu->menuAction();
  BuildToolbar();
  BuildStatusBar();
  DisableWhatIsNotBuilt();
  timeRefresh_.setSingleShot(true);
  timeRefresh_.setInterval(kRefreshMs);
  connect(&timeRefresh_, &QTimer::timeout, this, &MainForm::ShowPendingTime);
}

MainForm::~MainForm() {
  if (hourglass_) QApplication::restoreOverrideCursor();
}

void MainForm::BuildToolbar() {
  for (const ToolbarButton& button : kToolbar) {
    if (*button.key == '\0') {
      ui_->Toolbar1->addSeparator();
      continue;
    }
    QAction* action = ui_->Toolbar1->addAction(Icon(button.image), QString());
    action->setObjectName(QString::fromLatin1(button.key));
    action->setToolTip(QString::fromLatin1(button.toolTip));
    buttons_[button.key] = action;
    images_[button.key] = button.image;
  }
  buttons_["ScrollBar"]->setVisible(false);
  QAction* indicator = buttons_["Command1"];
  indicator->setText(indicator->toolTip());
  indicator->setVisible(false);
  auto* button = qobject_cast<QToolButton*>(ui_->Toolbar1->widgetForAction(indicator));
  button->setObjectName(QStringLiteral("Command1"));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setStyleSheet(QStringLiteral("QToolButton { color: white; background: #b00020; font-weight: bold; }"));
}

void MainForm::BuildStatusBar() {
  constexpr int kStretch[] = {0, 3, 6, 2, 2, 3};
  for (int panel = 1; panel <= 5; ++panel) {
    panels_[panel] = panel == kFilePanel ? new PathLabel(this) : new QLabel(this);
    panels_[panel]->setObjectName(QStringLiteral("StatusBar1_%1").arg(panel));
    panels_[panel]->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    panels_[panel]->setTextFormat(Qt::PlainText);
    ui_->StatusBar1->addWidget(panels_[panel], kStretch[panel]);
  }
  panels_[5]->setVisible(false);
}

void MainForm::DisableWhatIsNotBuilt() {
  for (const auto& [name, action] : menuItems_) action->setEnabled(IsBuilt(name));
  for (const auto& [key, action] : buttons_) action->setEnabled(IsBuilt(key));
  for (const char* item : {"mnuAcquireStart", "mnuAcquireStop"}) SetMenuEnabled(item, false);
}

QMdiArea& MainForm::GraphArea() {
  return *ui_->MdiClient;
}

QToolBar& MainForm::Toolbar() {
  return *ui_->Toolbar1;
}

QAction* MainForm::MenuItem(std::string_view item) const {
  return Find(menuItems_, item);
}

QAction* MainForm::Button(std::string_view key) const {
  return Find(buttons_, key);
}

bool MainForm::RuleAllows(std::string_view item) const {
  const auto found = ruleAllows_.find(item);
  return found != ruleAllows_.end() && found->second;
}

QString MainForm::Panel(int panel) const {
  return panel == kTimePanel ? ToQt(pendingTime_) : panels_[panel]->text();
}

void MainForm::SetPanel(int panel, const OperatorText& shown) {
  const std::string text = language_.In(shown);
  if (panel == kTimePanel) {
    if (pendingTime_ == text) return;
    pendingTime_ = text;
    if (!timeRefresh_.isActive()) timeRefresh_.start();
    return;
  }
  panels_[panel]->setText(ToQt(text));
  if (panel == kFilePanel) panels_[panel]->setToolTip(ToQt(text));
  if (panel == 5) panels_[5]->setVisible(!text.empty());
}

void MainForm::ShowPendingTime() {
  panels_[kTimePanel]->setText(ToQt(pendingTime_));
}

void MainForm::SetMenuEnabled(std::string_view item, bool enabled) {
  ruleAllows_[std::string(item)] = enabled;
  QAction* action = MenuItem(item);
  if (!action) return;
  action->setEnabled(enabled && IsBuilt(item));
  for (const ToolbarButton& button : kToolbar)
    if (button.followsMenu && item == button.followsMenu) buttons_[button.key]->setEnabled(action->isEnabled());
}

void MainForm::SetMenuVisible(std::string_view item, bool visible) {
  if (QAction* action = MenuItem(item)) action->setVisible(visible);
}

void MainForm::SetMenuCaption(std::string_view item, const OperatorText& caption) {
  if (QAction* action = MenuItem(item)) action->setText(ToQt(language_.In(caption)));
}

void MainForm::SetButtonImage(std::string_view key, int image) {
  QAction* action = Button(key);
  if (!action || ButtonImage(key) == image) return;
  images_[std::string(key)] = image;
  action->setIcon(Icon(image));
}

int MainForm::ButtonImage(std::string_view key) const {
  const auto found = images_.find(key);
  return found == images_.end() ? 0 : found->second;
}

void MainForm::SetButtonVisible(std::string_view key, bool visible) {
  if (QAction* action = Button(key)) action->setVisible(visible);
}

void MainForm::SetButtonEnabled(std::string_view key, bool enabled) {
  if (QAction* action = Button(key)) action->setEnabled(enabled && IsBuilt(key));
}

void MainForm::SetButtonToolTip(std::string_view key, const OperatorText& text) {
  if (QAction* action = Button(key)) action->setToolTip(ToQt(language_.In(text)));
}

void MainForm::ResetCaption() {
  setWindowTitle(ToQt(language_.In(text::BaseTitle + " " VELK_VERSION)));
}

void MainForm::SetHourglass(bool on) {
  if (on == hourglass_) return;
  hourglass_ = on;
  if (on)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
}

void MainForm::Repaint() {
  update();
}

void MainForm::Beep() {
  QApplication::beep();
}

void MainForm::closeEvent(QCloseEvent* event) {
  event->setAccepted(!onQueryUnload || onQueryUnload());
}

}  // namespace velk
