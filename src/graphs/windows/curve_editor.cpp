#include "graphs/windows/curve_editor.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QToolTip>

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
  const bool asksForTip = event->type() == QEvent::ToolTip;
  if (!asksForTip && event->type() != QEvent::MouseButtonRelease) return false;
  const bool isHeader = watched == &view_.HeaderBand();
  if (asksForTip) {
    const auto& help = *static_cast<QHelpEvent*>(event);
    return isHeader && Picture1_MouseMove(help.pos(), help.globalPos());
  }
  const auto& mouse = *static_cast<QMouseEvent*>(event);
  const QPoint point = mouse.position().toPoint();
  if (isHeader) {
    if (mouse.button() == Qt::LeftButton) Picture1_Click(point);
    return false;
  }
  const LabelRows::Place label = view_.Labels().PlaceAt(point);
  if (label.column == 0) return false;
  if (mouse.button() == Qt::LeftButton) Label_Click(label);
  if (mouse.button() == Qt::RightButton) Label_MouseDown(label);
  return false;
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

void CurveEditor::Picture1_Click(const QPoint& point) {
  const HeaderPlace place = view_.PlaceInHeader(point);
  switch (place.zone) {
    case HeaderZone::None:
      return;
    case HeaderZone::Minimum:
      return Edit("Picture1_Click", place.row, AskMinimum);
    case HeaderZone::Colour:
      return Edit("Picture1_Click", place.row, AskCurveColour);
    case HeaderZone::Maximum:
      return Edit("Picture1_Click", place.row, AskMaximum);
  }
}

void CurveEditor::Label_Click(const LabelRows::Place& label) {
  const LabelClick& row = kLabelClicks[label.column - 1];
  Edit(row.click, label.row + 1, row.ask);
}

void CurveEditor::Label_MouseDown(const LabelRows::Place& label) {
  Change(kLabelClicks[label.column - 1].down, label.row + 1, curves_.editProperties);
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
