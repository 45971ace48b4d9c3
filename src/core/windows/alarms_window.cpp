#include "core/windows/alarms_window.h"

#include <QScreen>
#include <QStyle>
#include <string>

#include "base/text_qt.h"
#include "core/alarms.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_alarms_window.h"

namespace velk {

namespace {

constexpr int kBetweenLabels = 3;  // 45 twips
constexpr int kBelowLabels = 67;   // 1000 twips: the button

std::string MarkedName(const Session& session, int parameter) {
  const Parameter& alarmed = session.CurrentParameters[parameter];
  return AlarmMark(SideOutOfLimits(alarmed, session.CurrentValue[parameter])) + alarmed.name;
}

}  // namespace

Alarms::Alarms(WindowHost& host, const Session& session) : QDialog(host.Parent()), ui_(std::make_unique<Ui::Alarms>()) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Alarms);
  for (int i = 1; i <= session.TotalParameters; ++i)
    if (session.AlarmTriggered[i]) AddLabel(ToQt(MarkedName(session, i)));
  FitToLabels();
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(*this, host.Words());
}

Alarms::~Alarms() = default;

void Alarms::AddLabel(const QString& name) {
  QLabel* label = ui_->Label1_0;
  if (!label1_.empty()) {
    label = new QLabel(ui_->names);
    label->setObjectName(QStringLiteral("Label1_%1").arg(label1_.size()));
    label->setTextFormat(ui_->Label1_0->textFormat());
    const QLabel* last = label1_.back();
    label->move(last->x(), last->y() + last->height() + kBetweenLabels);
  }
  label->setText(name);
  label->resize(label->sizeHint());
  label1_.push_back(label);
}

/// As tall as its labels and the button need, as wide as the longest name; where the screen has no room for that, the
/// names scroll.
void Alarms::FitToLabels() {
  int right = 0;
  for (const QLabel* label : label1_) right = std::max(right, label->x() + label->width() + ui_->Label1_0->x());
  const QLabel* last = label1_.empty() ? ui_->Label1_0 : label1_.back();
  const int below = last->y() + last->height();
  ui_->names->setMinimumSize(right, below);
  const QSize room = screen()->availableSize() * 0.85;
  const QSize wanted = QSize(right, below + kBelowLabels).expandedTo(minimumSize());
  const int bar = wanted.height() > room.height() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
  resize((wanted + QSize(bar, 0)).boundedTo(room));
}

void BindAlarms(CommandBinder& commands, WindowHost& host, const Session& session) {
  for (const char* command : {"mnuViewAlarms", "Command1"}) commands.Bind(command, [&] { host.Show<Alarms>(session); });
}

}  // namespace velk
