#include "shell/first_steps.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <utility>

#include "model/status.h"
#include "model/texts.h"
#include "shell/main_form.h"

namespace velk {

namespace {

constexpr int kFollowMs = 500;
// In English; the window is translated with the main window's other captions.
constexpr const char* kHeading = "The way to a recorded job";
constexpr const char* kSimulatedUnit = "Try with a simulated unit";

bool HasNamedChannel(const Session& session) {
  for (int i = 1; i <= session.NumberOfParameters; ++i) {
    const std::string& name = session.Parameters[static_cast<std::size_t>(i)].name;
    // The name of a fresh channel ends in its number, in any language.
    if (!name.empty() && !name.ends_with(" " + std::to_string(i))) return true;
  }
  return false;
}

}  // namespace

FirstSteps::FirstSteps(MainForm& form, const Session& session)
    : QFrame(form.GraphArea().viewport()), form_(form), session_(session), area_(form.GraphArea()) {
  setObjectName(QStringLiteral("FirstSteps"));
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(16, 16, 16, 16);
  auto* heading = new QLabel(QString::fromLatin1(kHeading), this);
  heading->setObjectName(QStringLiteral("lblFirstSteps"));
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  layout->addWidget(heading);
  AddStep("cmdStep_1", "Choose instrument and port", "mnuEditSerialPort",
          [this] { return !session_.SerialData.empty() && portIsThere && portIsThere(); });
  AddStep("cmdStep_2", "Connect to the instrument", "mnuAcquireConnect",
          [this] { return !StatusIs(session_, text::StatusReady); });
  AddStep("cmdStep_3", "Name the channels, set scales and graphs", "mnuEditTable",
          [this] { return HasNamedChannel(session_); });
  AddStep("cmdStep_4", "Choose the file to record to", "mnuFileRecord",
          [this] { return !session_.CurrentFile.empty(); });
  AddStep("cmdStep_5", "Start", "mnuAcquireStart", [this] { return session_.AcquireStarted; });
  layout->addSpacing(8);
  auto* simulated = new QPushButton(QString::fromLatin1(kSimulatedUnit), this);
  simulated->setObjectName(QStringLiteral("cmdSimulated"));
  connect(simulated, &QPushButton::clicked, this, [this] {
    if (onSimulatedUnit) onSimulatedUnit();
  });
  layout->addWidget(simulated);
  area_.viewport()->installEventFilter(this);
  follow_.setInterval(kFollowMs);
  connect(&follow_, &QTimer::timeout, this, &FirstSteps::Refresh);
  follow_.start();
  Refresh();
}

void FirstSteps::AddStep(const char* name, const char* caption, const char* item, std::function<bool()> isDone) {
  auto* button = new QPushButton(QString::fromLatin1(caption), this);
  button->setObjectName(QString::fromLatin1(name));
  button->setStyleSheet(QStringLiteral("QPushButton { text-align: left; padding: 4px 12px; }"));
  connect(button, &QPushButton::clicked, this, [this, item] {
    form_.MenuItem(item)->trigger();
    Refresh();
  });
  layout()->addWidget(button);
  steps_.push_back({button, item, std::move(isDone)});
}

void FirstSteps::Refresh() {
  const bool graphsStand = !area_.subWindowList().isEmpty();
  setVisible(!graphsStand);
  if (graphsStand) return;
  for (const Step& step : steps_) {
    const bool done = step.isDone();
    step.button->setEnabled(form_.MenuItem(step.item)->isEnabled());
    step.button->setIcon(style()->standardIcon(done ? QStyle::SP_DialogApplyButton : QStyle::SP_ArrowRight));
    step.button->setProperty("done", done);
  }
  Place();
}

void FirstSteps::Place() {
  adjustSize();
  const QSize room = area_.viewport()->size();
  move((room.width() - width()) / 2, (room.height() - height()) / 2);
}

bool FirstSteps::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) Place();
  if (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildRemoved)
    QMetaObject::invokeMethod(this, &FirstSteps::Refresh, Qt::QueuedConnection);
  return QFrame::eventFilter(watched, event);
}

}  // namespace velk
