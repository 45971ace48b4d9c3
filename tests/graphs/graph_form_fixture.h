#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>

#include "graphs/chart_fixture.h"
#include "graphs/label_reading.h"
#include "graphs/windows/graph_form_new.h"
#include "graphs/windows/graph_windows_mdi.h"
#include "model/status.h"
#include "platform/settings/settings.h"
#include "support/fake_clock.h"
#include "support/memory_folder.h"
#include "support/scripted_dialogs.h"

namespace velk::test {

/// A client area with the windows of a session in it.
struct GraphDesk {
  explicit GraphDesk(int curveCount = 1) {
    GiveCurves(session, curveCount);
    session.FitGraphsToWindows = false;  // 15 twips a dot, so that places can be told
    area.resize(1300, 760);
    area.show();
  }

  void Create() { windows.CreateGraphWindows(); }
  GraphFormNew& Form(int graph = 3) { return *dynamic_cast<GraphFormNew*>(session.GraphForms[graph]); }
  template <class Widget>
  Widget* Find(const char* name, int graph = 3) {
    return Form(graph).findChild<Widget*>(QLatin1String(name));
  }
  std::string Text(const std::string& label) { return LabelText(Form(), label); }
  QRect Box(const std::string& label) { return LabelBox(Form(), label); }
  int Rows(int graph = 3) { return LabelsOf(Form(graph)).Count(); }
  /// Time for the screen to follow.
  void Refresh() { clock.Advance(40); }
  void ResizeWindow(int width, int height) { Form().parentWidget()->resize(width, height); }

  Gate gate;
  FakeClock clock{gate};
  ScriptedDialogs dialogs{gate};
  MemoryFolder settingsFolder;
  SettingsStore settings{settingsFolder.Path()};
  Platform platform{clock, gate, dialogs, settings, English()};
  Session session;
  int headersStored = 0;
  QMdiArea area;
  ScreenRefresh refresh{platform.clock};
  GraphWindowsMdi windows{session, platform, EnglishWindows(), area, refresh, [this] { ++headersStored; }};
};

}  // namespace velk::test
