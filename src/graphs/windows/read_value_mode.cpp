#include "graphs/windows/read_value_mode.h"

#include <QMouseEvent>
#include <cmath>
#include <vector>

#include "graphs/read_value.h"
#include "graphs/texts.h"
#include "model/help_topics.h"
#include "model/parameter_questions.h"

namespace velk {

ReadValueMode::ReadValueMode(const Session& session, const Platform& platform, const ParameterCurves& curves,
                             const GraphHistory& history, ChartView& view, GraphHistory::Run run, Caption caption)
    : session_(session),
      platform_(platform),
      curves_(curves),
      history_(history),
      view_(view),
      measures_(MeasuresOf(session)),
      run_(std::move(run)),
      caption_(std::move(caption)) {
  view_.PlotArea().installEventFilter(this);
}

void ReadValueMode::Press() {
  if (IsOn()) return End();
  const int slot = ChooseCurve();
  if (slot == 0) return;
  parameter_ = curves_.ParameterOf(slot);
  view_.PlotArea().setMouseTracking(true);
  view_.PlotArea().setCursor(Qt::CrossCursor);
}

void ReadValueMode::End() {
  if (!IsOn()) return;
  parameter_ = 0;
  view_.PlotArea().setMouseTracking(false);
  view_.PlotArea().unsetCursor();
  caption_(std::nullopt);
}

/// 0 where none was chosen.
int ReadValueMode::ChooseCurve() const {
  if (curves_.Count() <= 1) return curves_.Count();
  const int count = curves_.Count();
  std::vector<std::string> names;
  for (int slot = 1; slot <= count; ++slot) names.push_back(curves_.Curve(slot).name);
  const auto slot =
      AskWhich(platform_.dialogs, text::ReadValueTitle, text::SelectParameterToRead, names, topic::StripChart);
  // Events have run: the window may have other curves by now.
  return slot && curves_.Count() == count ? *slot : 0;
}

int ReadValueMode::Slot() const {
  for (int slot = 1; slot <= curves_.Count(); ++slot)
    if (curves_.ParameterOf(slot) == parameter_) return slot;
  return 0;
}

bool ReadValueMode::eventFilter(QObject* watched, QEvent* event) {
  if (IsOn() && event->type() == QEvent::MouseMove) {
    const double y = view_.PlotTwips(static_cast<const QMouseEvent*>(event)->position().y());
    std::string text;
    run_("Pic2_MouseMove", [&] { text = TextAt(y); });
    // A box may have stood meanwhile, and behind it the mode may have ended.
    if (IsOn()) caption_(text);
  }
  return QObject::eventFilter(watched, event);
}

/// Empty where there is nothing to read.
std::string ReadValueMode::TextAt(double y) const {
  OpenLog* log = history_.Log();
  const double start = history_.PageStart();
  const int slot = Slot();
  if (log == nullptr || start == 0 || slot == 0) return {};
  const double time = start + std::floor(y / measures_.pixeldivide) * session_.Times.GraphTimeStep;
  if (history_.LiveView() && time > session_.SampleTime) return {};
  const auto point = ReadValueAt(session_, curves_, slot, log->Reader(), time);
  return point ? ReadValueCaption(curves_.Curve(slot), *point, platform_.language) : std::string();
}

}  // namespace velk
