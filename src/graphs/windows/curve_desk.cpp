#include "graphs/windows/curve_desk.h"

#include <utility>

#include "graphs/curve_moves.h"
#include "graphs/texts.h"
#include "graphs/windows/curve_editor.h"
#include "model/help_topics.h"
#include "model/parameter_questions.h"
#include "model/status.h"
#include "model/texts.h"
#include "settings/windows/properties.h"

namespace velk {

namespace {

constexpr int kBeside = 24;  ///< pixels that a new window stands away from the one that it came from

/// The curves of a live window are parameters of the working set. Their properties are left alone while data come in.
EditedCurves CurvesOf(GraphFormNew& form, WindowHost& host, Session& session, std::function<void()> changed,
                      std::function<std::function<void()>(int parameter)> calibrationOf) {
  EditedCurves curves;
  curves.idOf = [&form](int slot) { return form.Curves().ParameterOf(slot); };
  curves.definition = [&session](int parameter) {
    return session.CurrentParameters[static_cast<std::size_t>(parameter)];
  };
  curves.store = [&session](int parameter, const Parameter& edited) {
    CopyDefinition(edited, session.CurrentParameters[static_cast<std::size_t>(parameter)]);
  };
  curves.editProperties = [&host, &session, calibrationOf = std::move(calibrationOf)](int parameter) {
    if (StatusIs(session, text::StatusAcquiringData) || StatusIs(session, text::StatusAcquiringPaused)) return false;
    const auto properties = host.Ask<Properties>(PropertiesOf(session, parameter), calibrationOf(parameter));
    if (properties) StoreProperties(session, parameter, *properties);
    return properties.has_value();
  };
  curves.show = [&form, changed = std::move(changed)] {
    form.RefreshForm();
    changed();
  };
  return curves;
}

}  // namespace

CurveDesk::CurveDesk(WindowHost& host, Session& session, Platform& platform, GraphWindowsMdi& graphs,
                     std::function<void()> changed)
    : host_(host), session_(session), platform_(platform), graphs_(graphs), changed_(std::move(changed)) {
  graphs_.onCreated = [this](GraphFormNew& form) { Attach(form); };
}

CurveDesk::~CurveDesk() {
  graphs_.onCreated = nullptr;
}

void CurveDesk::Attach(GraphFormNew& form) {
  const auto calibration = [this](int parameter) {
    return calibrationOf ? calibrationOf(parameter) : std::function<void()>();
  };
  new CurveEditor(form, form.View(), host_, CurvesOf(form, host_, session_, changed_, calibration));
  Bind(form, "Print", &CurveDesk::Print);
  Bind(form, "Copy", &CurveDesk::Copy);
  Bind(form, "Paste", &CurveDesk::Paste);
  Bind(form, "Remove", &CurveDesk::Remove);
  UpdateToolbars();
  UpdateToolbar(form);  // which isn't among the others yet
}

void CurveDesk::Bind(GraphFormNew& form, const char* key, void (CurveDesk::*work)(const Statements& run, int graph)) {
  form.Toolbar().Bind(key, [this, work, graph = form.FormIndex()] {
    RunProcedure({platform_.dialogs, "Toolbar1_ButtonClick"},
                 [&](const Statements& run) { (this->*work)(run, graph); });
  });
}

void CurveDesk::UpdateToolbar(GraphFormNew& form) const {
  const int graph = form.FormIndex();
  form.Toolbar().SetEnabled("Paste", session_.CopySource != 0 && session_.CopySource != graph);
  form.Toolbar().SetEnabled("Remove", session_.GraphCurveCount[graph] > 1);
}

void CurveDesk::UpdateToolbars() {
  // A map that was made anew may mean others by the number.
  if (session_.GraphCurveCount[session_.CopySource] == 0) session_.CopySource = 0;
  for (int graph = 1; graph <= kMaxParameters; ++graph)
    if (GraphFormNew* form = graphs_.Form(graph)) UpdateToolbar(*form);
}

void CurveDesk::Print(const Statements& run, int graph) {
  if (session_.LogFileInUse.empty())
    platform_.dialogs.Message({text::FileNameFirst, text::GraphsTitle});
  else if (onPrint)
    run([&] { onPrint(graph); });
}

void CurveDesk::Copy(const Statements& run, int graph) {
  session_.CopySource = static_cast<std::int16_t>(graph);
  run([&] { UpdateToolbars(); });
}

void CurveDesk::Paste(const Statements& run, int graph) {
  if (session_.CopySource == 0 || session_.CopySource == graph) return;
  if (!HasRoomForCurve(session_, graph)) {
    platform_.dialogs.Message(
        {text::UnableToPaste + std::to_string(kMaxParameters), text::GraphsTitle, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  const int source = std::exchange(session_.CopySource, std::int16_t{0});
  MoveFirstCurve(session_, source, graph);
  run([&] {
    LoadAgain(source);
    LoadAgain(graph);
    UpdateToolbars();
    changed_();
  });
}

void CurveDesk::Remove(const Statements& run, int graph) {
  const int count = session_.GraphCurveCount[graph];
  if (count == 2) return RemoveParameter(graph, 2);
  if (count < 2) return;
  const auto slot = run([&] {
    return AskWhich(platform_.dialogs, text::RemoveTitle, text::RemovePrompt, CurveNames(session_, graph),
                    topic::StripChart);
  });
  // Events have run: the window may have other curves by now.
  if (slot && session_.GraphCurveCount[graph] == count) RemoveParameter(graph, *slot);
}

void CurveDesk::RemoveParameter(int graph, int slot) {
  RunProcedure({platform_.dialogs, "RemoveParameter"}, [&](const Statements& run) {
    const GraphFormNew* form = graphs_.Form(graph);
    if (!form) return;
    const QRect place = form->parentWidget()->geometry();
    const double timeOrigin = form->TimeOrigin();
    const int own = TakeCurveOut(session_, graph, slot);
    graphs_.Open(own, place.translated(kBeside, kBeside), timeOrigin);
    run([&] {
      LoadAgain(graph);
      UpdateToolbars();
      changed_();
    });
  });
}

void CurveDesk::LoadAgain(int graph) {
  if (session_.GraphCurveCount[graph] == 0) return graphs_.Close(graph);
  if (GraphFormNew* form = graphs_.Form(graph)) form->LoadAgain();
}

}  // namespace velk
