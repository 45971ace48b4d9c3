#include "graphs/windows/curve_editor.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QToolTip>
#include <utility>

#include "base/text_qt.h"
#include "graphs/texts.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

MessageText TipOf(HeaderZone zone) {
  switch (zone) {
    case HeaderZone::None:
      break;
    case HeaderZone::Minimum:
      return text::TipMinimum;
    case HeaderZone::Colour:
      return text::TipColour;
    case HeaderZone::Maximum:
      return text::TipMaximum;
  }
  return {};
}

/// What a click on a label asks, and the procedures of both mouse buttons; by column.
struct LabelClick {
  const char* click;
  const char* down;
  CurveQuestion ask;
};
constexpr LabelClick kLabelClicks[] = {{"Label1_Click", "Label1_MouseDown", AskName},
                                       {"Label2_Click", "Label2_MouseDown", AskFormat},
                                       {"Label3_Click", "Label3_MouseDown", AskUnits}};

}  // namespace

CurveEditor::CurveEditor(QWidget& window, ChartView& view, WindowHost& host, EditedCurves curves)
    : QObject(&window), view_(view), host_(host), curves_(std::move(curves)) {
  view_.HeaderBand().installEventFilter(this);
  view_.Labels().installEventFilter(this);
}

bool CurveEditor::eventFilter(QObject* watched, QEvent* event) {
  // The view's parts tell of their end too, when the view is there no longer.
  const bool isPress = event->type() == QEvent::MouseButtonPress;
  const bool isRelease = event->type() == QEvent::MouseButtonRelease;
  const bool asksForTip = event->type() == QEvent::ToolTip;
  if (!isPress && !isRelease && !asksForTip) return false;
  const bool isHeader = watched == &view_.HeaderBand();
  if (asksForTip) {
    const auto& help = *static_cast<QHelpEvent*>(event);
    return isHeader && Picture1_MouseMove(help.pos(), help.globalPos());
  }
  const auto& mouse = *static_cast<QMouseEvent*>(event);
  const Part part = PartAt(isHeader, mouse.position().toPoint());
  const Part pressed = std::exchange(pressed_, isPress ? part : Part{});
  // A button that went down elsewhere, on the plot say, and was drawn here means nothing here.
  if (isRelease && part == pressed && part.row > 0) Click(part, mouse.button());
  return false;
}

CurveEditor::Part CurveEditor::PartAt(bool isHeader, const QPoint& point) const {
  if (isHeader) {
    const HeaderPlace place = view_.PlaceInHeader(point);
    return {.zone = place.zone, .row = place.row};
  }
  const LabelRows::Place label = view_.Labels().PlaceAt(point);
  return label.column == 0 ? Part{} : Part{.column = label.column, .row = label.row + 1};
}

void CurveEditor::Click(const Part& part, Qt::MouseButton button) {
  if (part.column == 0) {
    if (button == Qt::LeftButton) Picture1_Click(part);
    return;
  }
  if (button == Qt::LeftButton) Label_Click(part);
  if (button == Qt::RightButton) Label_MouseDown(part);
}

bool CurveEditor::Picture1_MouseMove(const QPoint& point, const QPoint& onScreen) {
  MessageText tip;
  RunProcedure({host_.Boxes(), "Picture1_MouseMove"}, [&](const Statements& run) {
    run([&] {
      tip = TipOf(view_.PlaceInHeader(point).zone);
      QToolTip::showText(onScreen, ToQt(host_.Words().Translator.In(tip)), &view_.HeaderBand());
    });
  });
  return tip != MessageText{};
}

void CurveEditor::Picture1_Click(const Part& part) {
  switch (part.zone) {
    case HeaderZone::None:
      return;
    case HeaderZone::Minimum:
      return Edit("Picture1_Click", part.row, AskMinimum);
    case HeaderZone::Colour:
      return Edit("Picture1_Click", part.row, AskCurveColour);
    case HeaderZone::Maximum:
      return Edit("Picture1_Click", part.row, AskMaximum);
  }
}

void CurveEditor::Label_Click(const Part& label) {
  const LabelClick& click = kLabelClicks[label.column - 1];
  Edit(click.click, label.row, click.ask);
}

void CurveEditor::Label_MouseDown(const Part& label) {
  Change(kLabelClicks[label.column - 1].down, label.row, curves_.editProperties);
}

void CurveEditor::Edit(const char* procedure, int slot, CurveQuestion ask) {
  Change(procedure, slot, [&dialogs = host_.Boxes(), curves = curves_, ask](int id) {
    const auto edited = ask(dialogs, curves.definition(id));
    if (edited) curves.store(id, *edited);
    return edited.has_value();
  });
}

void CurveEditor::Change(const char* procedure, int slot, const std::function<bool(int)>& ask) {
  const int id = curves_.idOf(slot);
  if (id == 0) return;
  // The window may be closed while the question stands.
  const QPointer<CurveEditor> alive(this);
  RunProcedure({host_.Boxes(), procedure}, [&, ask = ask](const Statements& run) {
    if (!ask(id)) return;
    run([&] {
      if (alive) curves_.show();
    });
  });
}

}  // namespace velk
