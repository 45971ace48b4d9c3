#include "shell/main_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMenu>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <stdexcept>
#include <utility>

#include "base/text_qt.h"
#include "model/texts.h"
#include "shell/first_steps.h"
#include "shell/icons.h"
#include "shell/main_place.h"
#include "shell/path_label.h"
#include "shell/speed_bar.h"
#include "shell/status_panel.h"
#include "shell/texts.h"
#include "shell/ui_main_form.h"

/// A static library's resources have to be asked for, from outside any namespace.
static void LoadIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace velk {

namespace {

constexpr int kFilePanel = 2;
constexpr int kMissingRowsPanel = 5;
constexpr int kPlacePanel = 6;
constexpr int kDataPanel = 7;
constexpr int kRecordingPanel = 8;

bool ChangesWithEverySample(int panel) {
  return panel == 4 || panel == kPlacePanel;
}

/// Is there only while it has something to say.
bool ComesAndGoes(int panel) {
  return panel >= kMissingRowsPanel;
}

/// The toolbar from left to right; Alarms has to be the 17th. An empty key is a separator.
struct ToolbarButton {
  const char* key;
  int image;
  const char* toolTip;
};

// Never by colour alone.
constexpr const char* kWarningMark = "\u26a0 ";
constexpr const char* kRecordingMark = "\u25cf ";

PanelLabel* MakePanel(int panel, QWidget* parent) {
  if (panel == kFilePanel) return new PathLabel(parent);
  if (panel == kDataPanel) return new WholeLabel(parent);
  return new PanelLabel(parent);
}

/// A word that is a tool tip and a caption has no letter of its own to be chosen by; in a menu it gets one.
OperatorText WithLetter(const OperatorText& caption) {
  constexpr std::pair<MessageText, MessageText> kMenuLetters[] = {
      {text::Start, text::MenuStart}, {text::Pause, text::MenuPause}, {text::Resume, text::MenuResume}};
  const std::string english = caption.English();
  for (const auto& [word, withLetter] : kMenuLetters)
    if (english == word.english) return withLetter;
  return caption;
}

constexpr std::string_view kSpeedBar = "ScrollBar";

constexpr ToolbarButton kToolbar[] = {
    {"Record", image::Record, "Record Data To..."},
    {"PlayBack", image::PlayBack, "PlayBack File"},
    {"Exit", image::Exit, "Exit"},
    {"", 0, ""},
    {"Acquire", image::Acquire, "Connect to Hardware"},
    {"", 0, ""},
    {"Edit", image::Edit, "Edit Settings"},
    {"Tools", image::Tools, "Tools"},
    {"", 0, ""},
    {"Help", image::Help, "VELK Help Contents"},
    {"", 0, ""},
    {"Pause", image::PauseStopped, "Start"},
    {"Stop", image::Stop, "Stop"},
    {"RecordToDB", image::RecordOff, "Record To Database"},
    {"", 0, ""},
    {"ScrollBar", 0, "Adjust Playback Speed"},
    {"Alarms", image::Alarms, "Alarms Triggered"},
    {"", 0, ""},
    {"connect", image::ConnectOff, "Connected"},
    {"disconnect", image::DisconnectOff, "Disconnected"},
    {"Command1", image::Alarms, "Alarms Triggered"},
};

bool IsMenuItem(const QObject& object) {
  return object.objectName().startsWith(QLatin1String("mnu"));
}

QAction* Find(const ActionsByName& actions, std::string_view name) {
  const auto found = actions.find(name);
  return found == actions.end() ? nullptr : found->second;
}

/// What has to be there: a room that names another item or button has a slip.
QAction& Known(QAction* action, std::string_view name) {
  if (!action) throw std::logic_error("an item or button that is not there: " + std::string(name));
  return *action;
}

}  // namespace

MainForm::MainForm(const Language& language, const Session& session, const ScreenRefresh& refresh)
    : language_(language),
      ui_(std::make_unique<Ui::MainForm>()),
      refresh_(refresh, [this](WindowStrips& strips) { ShowPending(strips); }) {
  LoadIcons();
  QApplication::setWindowIcon(Icon("velk"));
  ui_->setupUi(this);
  for (QAction* action : findChildren<QAction*>())
    if (IsMenuItem(*action)) menuItems_[FromQt(action->objectName())] = action;
  for (QMenu* menu : findChildren<QMenu*>())
    if (IsMenuItem(*menu)) menuItems_[FromQt(menu->objectName())] = menu->menuAction();
  connect(this, &QWidget::windowTitleChanged, this, &MainForm::KeepCaption);
  BuildToolbar();
  BuildStatusBar();
  commands_ = std::make_unique<Commands>(menuItems_, buttons_, session, language_);
  firstSteps_ = new FirstSteps(*this, session, RoomAboveGraphs());
}

MainForm::~MainForm() {
  if (hourglass_) QApplication::restoreOverrideCursor();
}

QBoxLayout& MainForm::RoomAboveGraphs() {
  QWidget* const graphs = takeCentralWidget();
  auto* const middle = new QWidget(this);
  auto* const rows = new QVBoxLayout(middle);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(graphs);
  setCentralWidget(middle);
  graphs->show();
  return *rows;
}

void MainForm::BuildToolbar() {
  for (const ToolbarButton& button : kToolbar) {
    if (*button.key == '\0') {
      ui_->Toolbar1->addSeparator();
      continue;
    }
    QAction* action =
        button.key == kSpeedBar ? AddSpeedBar(button.toolTip) : ui_->Toolbar1->addAction(Icon(button.image), QString());
    action->setObjectName(QString::fromLatin1(button.key));
    action->setToolTip(QString::fromLatin1(button.toolTip));
    buttons_[button.key] = action;
    images_[button.key] = button.image;
  }
  for (const char* plug : {"connect", "disconnect"})
    ui_->Toolbar1->widgetForAction(buttons_[plug])->setObjectName(QString::fromLatin1(plug));
  buttons_["ScrollBar"]->setVisible(false);
  QAction* indicator = buttons_["Command1"];
  indicator->setText(indicator->toolTip());
  indicator->setVisible(false);
  auto* button = qobject_cast<QToolButton*>(ui_->Toolbar1->widgetForAction(indicator));
  button->setObjectName(QStringLiteral("Command1"));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setStyleSheet(QStringLiteral("QToolButton { color: white; background: #b00020; font-weight: bold; }"));
}

QAction* MainForm::AddSpeedBar(const char* toolTip) {
  speedBar_ = new SpeedBar(QString::fromLatin1(toolTip), this);
  speedBar_->onChange = [this](int speed) {
    if (onSpeedChange) onSpeedChange(speed);
  };
  return ui_->Toolbar1->addWidget(speedBar_);
}

void MainForm::BuildStatusBar() {
  // What a job tells has the room of its text; the name of the file gives way to it first.
  constexpr int kStretch[] = {0, 3, 6, 1, 2, 3, 3, 0, 0};
  for (int panel = 1; panel <= kRecordingPanel; ++panel) {
    PanelLabel* label = MakePanel(panel, this);
    label->setObjectName(QStringLiteral("StatusBar1_%1").arg(panel));
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    panels_[panel] = new StatusPanel(label);
    panels_[panel]->setVisible(!ComesAndGoes(panel));
    // Status tips cover the others for a moment; what a job tells stays in view.
    if (panel >= kDataPanel)
      ui_->StatusBar1->addPermanentWidget(panels_[panel], kStretch[panel]);
    else
      ui_->StatusBar1->addWidget(panels_[panel], kStretch[panel]);
  }
  panels_[kRecordingPanel]->Label().setStyleSheet(
      QStringLiteral("QLabel { color: white; background: #c8102e; font-weight: bold; padding: 0 6px; }"));
}

void MainForm::ShowData(const OperatorText& shown, bool warns) {
  const std::string text = language_.In(shown);
  // A warning has bold letters, which need more room.
  if (std::exchange(dataWarns_, warns) != warns) ColourDataPanel();
  ShowPanelNow(kDataPanel, warns ? kWarningMark + text : text);
  panels_[kDataPanel]->Label().setToolTip(ToQt(text));
}

void MainForm::ColourDataPanel() {
  const bool dark = palette().color(QPalette::Window).lightness() < 128;
  const QString warning = dark ? QStringLiteral("QLabel { color: #ffc857; background: #3a2e10; font-weight: bold; }")
                               : QStringLiteral("QLabel { color: #8a5a00; background: #fff4d6; font-weight: bold; }");
  panels_[kDataPanel]->Label().setStyleSheet(dataWarns_ ? warning : QString());
}

void MainForm::ShowRecording(const OperatorText& text, const OperatorText& toolTip) {
  ShowPanelNow(kRecordingPanel, text.IsEmpty() ? std::string() : kRecordingMark + language_.In(text));
  panels_[kRecordingPanel]->Label().setToolTip(ToQt(language_.In(toolTip)));
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

QString MainForm::Panel(int panel) const {
  const auto pending = pending_.find(panel);
  return pending == pending_.end() ? panels_[panel]->Label().text() : ToQt(pending->second);
}

void MainForm::SetPanel(int panel, const OperatorText& shown) {
  std::string text = language_.In(shown);
  if (!ChangesWithEverySample(panel)) return ShowPanelNow(panel, text);
  if (told_[panel] == text) return;
  pending_[panel] = told_[panel] = std::move(text);
  refresh_.Ask();
}

void MainForm::ShowPanelNow(int panel, const std::string& text) {
  ShowPanel(panel, text);
  if (panels_[panel]->HasChanges()) refresh_.Ask();
}

void MainForm::ShowPanel(int panel, const std::string& text) {
  panels_[panel]->ShowText(ToQt(text));
  if (panel == kFilePanel) panels_[panel]->Label().setToolTip(ToQt(text));
  if (ComesAndGoes(panel)) panels_[panel]->setVisible(!text.empty());
}

void MainForm::ShowPending(WindowStrips& strips) {
  for (const auto& [panel, text] : std::exchange(pending_, {})) ShowPanel(panel, text);
  for (StatusPanel* const panel : panels_)
    if (panel != nullptr) panel->ShowChanges(strips);
}

void MainForm::ShowStatus(const MessageText& status) {
  commands_->ShowStatus(status);
  if (!StatusColumn(status)) return;
  MenuItem("mnuAcquireConnect")->setVisible(!IsPlayback(status));
  SetMenuCaption("mnuAcquire", IsPlayback(status) ? text::PlaybackMenu : text::DataAcquisitionMenu);
  if (status == text::StatusAcquiringData) CaptionStart(text::Pause);
  if (status == text::StatusAcquiringPaused) CaptionStart(text::Resume);
}

void MainForm::CaptionStart(const MessageText& caption) {
  SetMenuCaption("mnuAcquireStart", caption);
  SetButtonToolTip("Pause", caption);
}

void MainForm::SetMenuEnabled(std::string_view item, bool enabled) {
  commands_->AllowItem(item, enabled);
}

void MainForm::SetMenuCaption(std::string_view item, const OperatorText& caption) {
  Known(MenuItem(item), item).setText(ToQt(language_.In(WithLetter(caption))));
}

void MainForm::SetButtonImage(std::string_view key, int image) {
  QAction& action = Known(Button(key), key);
  if (ButtonImage(key) == image) return;
  images_[std::string(key)] = image;
  action.setIcon(Icon(image));
}

int MainForm::ButtonImage(std::string_view key) const {
  const auto found = images_.find(key);
  return found == images_.end() ? 0 : found->second;
}

void MainForm::SetButtonVisible(std::string_view key, bool visible) {
  Known(Button(key), key).setVisible(visible);
}

void MainForm::SetButtonEnabled(std::string_view key, bool enabled) {
  commands_->AllowButton(key, enabled);
}

void MainForm::SetButtonToolTip(std::string_view key, const OperatorText& text) {
  Known(Button(key), key).setToolTip(ToQt(language_.In(text)));
}

void MainForm::ShowSpeed(int speed) {
  speedBar_->Show(speed, language_.In(text::PlaybackSpeed + " " + std::to_string(speed) + ":1"));
}

void MainForm::ResetCaption() {
  caption_ = ToQt(language_.In(text::BaseTitle + " " VELK_VERSION));
  setWindowTitle(caption_);
}

/// The toolkit adds the title of a graph that fills the area.
void MainForm::KeepCaption(const QString& title) {
  if (!caption_.isEmpty() && title != caption_) setWindowTitle(caption_);
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

void MainForm::PlaceOnScreen(const std::string& place) {
  QList<QRect> rooms;
  for (const QScreen* screen : QGuiApplication::screens()) rooms += screen->availableGeometry();
  const MainPlace found = PlaceOnScreens(PlaceOf(place), size(), rooms);
  setGeometry(found.normal);
  if (found.isMaximised) setWindowState(windowState() | Qt::WindowMaximized);
}

/// What the window has before it is shown is no place of the operator's.
void MainForm::TellPlace() {
  if (!onPlaced || !isVisible() || isMinimized()) return;
  onPlaced(TextOf({isMaximized() ? normalGeometry() : geometry(), isMaximized()}));
}

void MainForm::moveEvent(QMoveEvent* event) {
  QMainWindow::moveEvent(event);
  TellPlace();
}

void MainForm::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  TellPlace();
}

void MainForm::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && dataWarns_) ColourDataPanel();
  if (event->type() == QEvent::WindowStateChange) TellPlace();
}

void MainForm::closeEvent(QCloseEvent* event) {
  event->setAccepted(!onQueryUnload || onQueryUnload());
}

}  // namespace velk
