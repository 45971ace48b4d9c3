#include "shell/first_steps.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPen>
#include <QPixmap>
#include <QPolygonF>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "model/status.h"
#include "model/texts.h"
#include "shell/main_form.h"

namespace velk {

namespace {

/// What a step asks of the machine (is the device there?) and of the session is told by nobody.
constexpr int kFollowMs = 1000;
constexpr int kMarkSize = 16;
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

/// A check or an arrow, as plain on a disabled button: a step that is done may not be offered again. (Those of an icon
/// theme are looked for in many folders.)
QIcon Mark(const QWidget& widget, bool isDone) {
  const qreal scale = widget.devicePixelRatioF();
  QPixmap picture(QSize(kMarkSize, kMarkSize) * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(widget.palette().color(QPalette::Active, QPalette::ButtonText), 2));
  if (isDone)
    painter.drawPolyline(QPolygonF({{3, 8}, {6.5, 11.5}, {13, 4.5}}));
  else
    painter.drawPolyline(QPolygonF({{6, 4}, {10, 8}, {6, 12}}));
  painter.end();
  QIcon mark(picture);
  mark.addPixmap(picture, QIcon::Disabled);
  return mark;
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
  connect(form_.MenuItem(item), &QAction::changed, button,
          [this, button, item] { button->setEnabled(form_.MenuItem(item)->isEnabled()); });
  layout()->addWidget(button);
  steps_.push_back({button, item, std::move(isDone)});
}

void FirstSteps::Refresh() {
  const bool graphsStand = !area_.subWindowList().isEmpty();
  setVisible(!graphsStand);
  if (graphsStand) {
    follow_.stop();
    return;
  }
  if (!follow_.isActive()) follow_.start();
  for (const Step& step : steps_) {
    step.button->setEnabled(form_.MenuItem(step.item)->isEnabled());
    const QVariant done = step.isDone();
    if (done != step.button->property("done")) ShowDone(*step.button, done.toBool());
  }
  Place();
}

void FirstSteps::ShowDone(QPushButton& button, bool done) {
  button.setProperty("done", done);
  button.setIcon(Mark(button, done));
}

void FirstSteps::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::StyleChange) return;
  for (const Step& step : steps_) ShowDone(*step.button, step.button->property("done").toBool());
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
