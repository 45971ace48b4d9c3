#include "graphs/windows/curve_editor.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QToolTip>

#include "base/text_qt.h"
#include "graphs/texts.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/dialogs/procedure.h"
#include "settings/windows/properties.h"

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

CurveEditor::CurveEditor(GraphFormNew& form, WindowHost& host, Session& session, std::function<void()> changed,
                         CalibrationOf calibrationOf)
    : QObject(&form),
      form_(form),
      host_(host),
      session_(session),
      changed_(std::move(changed)),
      calibrationOf_(std::move(calibrationOf)) {
  form_.View().HeaderBand().installEventFilter(this);
  form_.View().Labels().installEventFilter(this);
}

bool CurveEditor::eventFilter(QObject* watched, QEvent* event) {
  // The view's parts tell of their end too, when the view is there no longer.
  const bool asksForTip = event->type() == QEvent::ToolTip;
  if (!asksForTip && event->type() != QEvent::MouseButtonRelease) return false;
  const bool isHeader = watched == &form_.View().HeaderBand();
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
  const LabelRows::Place label = form_.View().Labels().PlaceAt(point);
  if (label.column == 0) return false;
  if (mouse.button() == Qt::LeftButton) Label_Click(label);
  if (mouse.button() == Qt::RightButton) Label_MouseDown(label);
  return false;
}

bool CurveEditor::Picture1_MouseMove(const QPoint& point, const QPoint& onScreen) {
  MessageText tip;
  RunProcedure({host_.Boxes(), "Picture1_MouseMove"}, [&](const Statements& run) {
    run([&] {
      tip = TipOf(form_.View().PlaceInHeader(point).zone);
      QToolTip::showText(onScreen, ToQt(host_.Words().Translator.In(tip)), &form_.View().HeaderBand());
    });
  });
  return tip != MessageText{};
}

void CurveEditor::Picture1_Click(const QPoint& point) {
  const HeaderPlace place = form_.View().PlaceInHeader(point);
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
  if (StatusIs(session_, text::StatusAcquiringData) || StatusIs(session_, text::StatusAcquiringPaused)) return;
  const auto ask = [&host = host_, &session = session_, calibrationOf = calibrationOf_](int parameter) {
    const auto properties = host.Ask<Properties>(PropertiesOf(session, parameter), calibrationOf(parameter));
    if (properties) StoreProperties(session, parameter, *properties);
    return properties.has_value();
  };
  Change(kLabelClicks[label.column - 1].down, label.row + 1, ask);
}

void CurveEditor::Edit(const char* procedure, int slot, CurveQuestion ask) {
  Change(procedure, slot, [&dialogs = host_.Boxes(), &session = session_, ask](int parameter) {
    const auto edited = ask(dialogs, session.CurrentParameters[static_cast<std::size_t>(parameter)]);
    if (edited) CopyDefinition(*edited, session.CurrentParameters[static_cast<std::size_t>(parameter)]);
    return edited.has_value();
  });
}

void CurveEditor::Change(const char* procedure, int slot, const std::function<bool(int)>& ask) {
  const int parameter = form_.Curves().ParameterOf(slot);
  if (parameter == 0) return;
  // The window may be closed while the question stands.
  const QPointer<CurveEditor> alive(this);
  RunProcedure({host_.Boxes(), procedure}, [&](const Statements& run) {
    if (!ask(parameter)) return;
    run([&] {
      if (!alive) return;
      form_.RefreshForm();
      changed_();
    });
  });
}

}  // namespace velk
