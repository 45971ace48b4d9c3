#pragma once

#include <QMdiArea>
#include <QPointer>
#include <array>
#include <functional>

#include "graphs/windows/graph_form_new.h"
#include "model/graph_window.h"
#include "model/session.h"
#include "platform/platform.h"
#include "platform/windows/screen_refresh.h"

class QMdiSubWindow;

namespace velk {

/// The strip-chart windows as children of the main window's client area. They follow its size until the operator has
/// moved one.
class GraphWindowsMdi : public QObject, public GraphWindows {
 public:
  /// `onHeaderChanged`, where given, is called whenever a window has drawn its header anew. `log` is what the windows
  /// look back into. `refresh` outlives it.
  GraphWindowsMdi(Session& session, Platform& platform, const Translation& translation, QMdiArea& area,
                  const ScreenRefresh& refresh, std::function<void()> onHeaderChanged = {}, OpenLog* log = nullptr);

  void CreateGraphWindows() override;
  void UnloadAll() override;
  void Rebuild(int graphNumber) override;

  /// The open window of a graph number; null where there is none.
  GraphFormNew* Form(int graphNumber) const;
  /// Makes the window of a graph number that has none. Its page begins at `timeOrigin`; 0: with the first sample.
  void Open(int graphNumber, const QRect& place, double timeOrigin);
  void Close(int graphNumber) { Unload(graphNumber); }
  /// FitGraphsToWindows or NightColours has changed.
  void FollowLooks();

  /// Told of each window that is made, before it is loaded.
  std::function<void(GraphFormNew&)> onCreated;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Create(int graphNumber, const QRect& place, double timeOrigin);
  void PlaceWindows(const std::vector<int>& graphs, const std::function<void(int graph, const QRect& place)>& put);
  bool StandWherePlaced() const;
  void FollowSoon();
  void FollowArea();
  void Unload(int graphNumber);

  Session& session_;
  Platform& platform_;
  const Translation& translation_;
  QMdiArea& area_;
  std::function<void()> onHeaderChanged_;
  OpenLog* log_;
  const ScreenRefresh& refresh_;
  std::array<QPointer<GraphFormNew>, kSlots> forms_;
  std::array<QRect, kSlots> placed_;  ///< where the program has put each in the area, which may be scrolled
  bool willFollow_ = false;
};

}  // namespace velk
