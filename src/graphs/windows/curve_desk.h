#pragma once

#include <functional>

#include "graphs/windows/graph_windows_mdi.h"
#include "i18n/windows/window_host.h"
#include "platform/dialogs/procedure.h"

namespace velk {

/// What the operator does with curves on the graph windows: editing one where it stands, and moving them from window to
/// window by the keys of their tool bars.
class CurveDesk {
 public:
  /// All outlive the desk, and the desk the windows. `changed` is called behind whatever reached the configuration.
  CurveDesk(WindowHost& host, Session& session, Platform& platform, GraphWindowsMdi& graphs,
            std::function<void()> changed);
  ~CurveDesk();
  CurveDesk(const CurveDesk&) = delete;
  CurveDesk& operator=(const CurveDesk&) = delete;

  /// Opens the page of a graph, for a log that has a name.
  std::function<void(int graph)> onPrint;
  /// What calibrates a parameter on the board of its unit; gives nothing for one that isn't calibrated there.
  std::function<std::function<void()>(int parameter)> calibrationOf;

  /// The curves stand on other graphs: a copied one may be gone.
  void UpdateToolbars();

 private:
  /// Gives a new window its work.
  void Attach(GraphFormNew& form);
  void Bind(GraphFormNew& form, const char* key, void (CurveDesk::*work)(const Statements& run, int graph));
  void Print(const Statements& run, int graph);
  void Copy(const Statements& run, int graph);
  void Paste(const Statements& run, int graph);
  void Remove(const Statements& run, int graph);
  void RemoveParameter(int graph, int slot);
  /// Lays a window out for its present curves, and closes it where it has none.
  void LoadAgain(int graph);
  void UpdateToolbar(GraphFormNew& form) const;

  WindowHost& host_;
  Session& session_;
  Platform& platform_;
  GraphWindowsMdi& graphs_;
  const std::function<void()> changed_;
};

}  // namespace velk
