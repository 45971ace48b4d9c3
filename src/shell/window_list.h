#pragma once

#include <QList>
#include <QObject>

class QMdiSubWindow;
class QMenu;

namespace velk {

class MainForm;

/// The menu Window: the list of the open graph windows, and their arrangement in the client area.
class WindowList {
 public:
  explicit WindowList(MainForm& form);

  void mnuWindowCascade_Click();
  /// Side by side.
  void mnuWindowTileVertically_Click();
  /// One below the other.
  void mnuWindowTileHorizontally_Click();
  void mnuWindowArrange_Click();

 private:
  QList<QMdiSubWindow*> Open() const;
  void FillList();
  void Tile(Qt::Orientation direction);
  /// Height that the icons of minimised windows take at the bottom.
  int ArrangeIcons();

  MainForm& form_;
  QMenu* list_;
};

}  // namespace velk
