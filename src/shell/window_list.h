#pragma once

#include <QList>
#include <QObject>
#include <QRect>
#include <functional>
#include <vector>

#include "model/session.h"

class QMdiSubWindow;
class QMenu;

namespace velk {

class MainForm;

/// The menu Window: the list of the open graph windows, and their arrangement in the client area.
class WindowList {
 public:
  /// `session` tells which graphs there are; it outlives the list.
  WindowList(MainForm& form, const Session& session);

  /// Opens the window of a graph that was closed.
  std::function<void(int graphNumber)> onReopen;

  void mnuWindowCascade_Click();
  /// Side by side.
  void mnuWindowTileVertically_Click();
  /// One below the other.
  void mnuWindowTileHorizontally_Click();
  void mnuWindowArrange_Click();
  void mnuWindowNext_Click();
  /// Over the graph in front.
  void mnuAcquireComment_Click();

 private:
  QList<QMdiSubWindow*> Open() const;
  QList<QMdiSubWindow*> Arranged() const;
  static void Place(const QList<QMdiSubWindow*>& windows, const std::vector<QRect>& places);
  void FillList();
  void AddClosed();
  void Tile(Qt::Orientation direction);
  /// Height that the icons of minimised windows take at the bottom.
  int ArrangeIcons();

  MainForm& form_;
  const Session& session_;
  QMenu* list_;
};

}  // namespace velk
