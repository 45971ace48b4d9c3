#include "shell/first_steps.h"

#include <QAction>
#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPen>
#include <QPixmap>
#include <QPolygonF>
#include <QPushButton>
#include <string_view>
#include <utility>

#include "model/status.h"
#include "model/texts.h"
#include "shell/main_form.h"

namespace velk {

namespace {

/// What a step asks of the machine (is the device there?) and of the session is told by nobody.
constexpr int kFollowMs = 2000;
constexpr int kMarkSize = 16;
/// A program needs some seconds to come up; a second press meanwhile would start another one.
constexpr int kSimulatedStartsMs = 5000;
constexpr int kMargin = 16;
constexpr int kStripMargin = 4;
constexpr const char* kConnect = "mnuAcquireConnect";
// In English; the window is translated with the main window's other captions.
constexpr const char* kHeading = "The way to a recorded job";
constexpr const char* kOnceConnected = "Once connected:";
constexpr const char* kWaitsForConnect = "Possible once VELK is connected to the instrument";
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

FirstSteps::FirstSteps(MainForm& form, const Session& session, QBoxLayout& aboveGraphs)
    : QFrame(form.GraphArea().viewport()),
      form_(form),
      session_(session),
      area_(form.GraphArea()),
      aboveGraphs_(aboveGraphs) {
  setObjectName(QStringLiteral("FirstSteps"));
  setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  setAutoFillBackground(true);
  auto* layout = new QBoxLayout(QBoxLayout::TopToBottom, this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  AddSteps();
  AddSimulatedUnit();
  layout->addStretch();
  area_.viewport()->installEventFilter(this);
  follow_.setInterval(kFollowMs);
  connect(&follow_, &QTimer::timeout, this, &FirstSteps::Refresh);
  Refresh();
}

QLabel* FirstSteps::AddLabel(const char* name, const char* caption) {
  auto* label = new QLabel(QString::fromLatin1(caption), this);
  label->setObjectName(QString::fromLatin1(name));
  layout()->addWidget(label);
  onlyInArea_.push_back(label);
  return label;
}

void FirstSteps::AddSteps() {
  QLabel* const heading = AddLabel("lblFirstSteps", kHeading);
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  AddStep("cmdStep_1", "Choose instrument and port", "mnuEditSerialPort", When::Any,
          [this] { return !session_.SerialData.empty() && portIsThere && portIsThere(); });
  AddStep("cmdStep_2", "Connect to the instrument", kConnect, When::Any,
          [this] { return !StatusIs(session_, text::StatusReady); });
  for (const Step& step : steps_) onlyInArea_.push_back(step.button);
  AddLabel("lblOnceConnected", kOnceConnected);
  AddStep("cmdStep_3", "Name the channels, set scales and graphs", "mnuEditTable", When::OnceConnected,
          [this] { return HasNamedChannel(session_); });
  AddStep("cmdStep_4", "Choose the file to record to", "mnuFileRecord", When::OnceConnected,
          [this] { return !session_.CurrentFile.empty(); });
  AddStep("cmdStep_5", "Start", "mnuAcquireStart", When::OnceConnected, [this] { return session_.AcquireStarted; });
}

void FirstSteps::AddSimulatedUnit() {
  auto* simulated = new QPushButton(QString::fromLatin1(kSimulatedUnit), this);
  simulated->setObjectName(QStringLiteral("cmdSimulated"));
  simulatedStarts_.setObjectName(QStringLiteral("simulatedStarts"));
  simulatedStarts_.setSingleShot(true);
  simulatedStarts_.setInterval(kSimulatedStartsMs);
  connect(&simulatedStarts_, &QTimer::timeout, simulated, [simulated] { simulated->setEnabled(true); });
  connect(simulated, &QPushButton::clicked, this, [this, simulated] {
    simulated->setEnabled(false);
    simulatedStarts_.start();
    if (onSimulatedUnit) onSimulatedUnit();
  });
  layout()->addWidget(simulated);
  onlyInArea_.push_back(simulated);
}

void FirstSteps::AddStep(const char* name, const char* caption, const char* item, When when,
                         std::function<bool()> isDone) {
  auto* button = new QPushButton(QString::fromLatin1(caption), this);
  button->setObjectName(QString::fromLatin1(name));
  button->setStyleSheet(QStringLiteral("QPushButton { text-align: left; padding: 4px 12px; }"));
  if (when == When::OnceConnected) button->setToolTip(QString::fromLatin1(kWaitsForConnect));
  connect(button, &QPushButton::clicked, this, [this, item] { Take(item); });
  const std::size_t place = steps_.size();
  connect(form_.MenuItem(item), &QAction::changed, button, [this, place] { ShowStep(steps_[place]); });
  layout()->addWidget(button);
  steps_.push_back({button, item, when, std::move(isDone)});
}

void FirstSteps::Take(const char* item) {
  form_.MenuItem(item)->trigger();
  if (std::string_view(item) == kConnect) leadsOn_ = StatusIs(session_, text::StatusReadyToAcquire);
  Refresh();
}

void FirstSteps::Refresh() {
  const bool graphsStand = !area_.subWindowList().isEmpty();
  leadsOn_ = leadsOn_ && graphsStand && StatusIs(session_, text::StatusReadyToAcquire);
  StandAsStrip(leadsOn_);
  setVisible(!graphsStand || leadsOn_);
  if (!isVisibleTo(parentWidget())) {
    follow_.stop();
    return;
  }
  if (!follow_.isActive()) follow_.start();
  for (const Step& step : steps_) ShowStep(step);
  Place();
}

void FirstSteps::ShowStep(const Step& step) {
  step.button->setEnabled(form_.MenuItem(step.item)->isEnabled() && (isStrip_ || step.when == When::Any));
  const QVariant done = step.isDone();
  if (done != step.button->property("done")) ShowDone(*step.button, done.toBool());
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

/// Of the steps those stand there that are left.
void FirstSteps::StandAsStrip(bool strip) {
  if (strip == isStrip_) return;
  isStrip_ = strip;
  for (QWidget* part : onlyInArea_) part->setVisible(!strip);
  const int margin = strip ? kStripMargin : kMargin;
  layout()->setContentsMargins(margin, margin, margin, margin);
  static_cast<QBoxLayout*>(layout())->setDirection(strip ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  if (strip) return aboveGraphs_.insertWidget(0, this);
  aboveGraphs_.removeWidget(this);
  setParent(area_.viewport());
}

void FirstSteps::Place() {
  if (isStrip_) return;
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
