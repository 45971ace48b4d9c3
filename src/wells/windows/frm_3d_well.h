#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"
#include "platform/dialogs/procedure.h"
#include "platform/loop/clock.h"
#include "wells/well_scene.h"
#include "wells/windows/well_access.h"

class QCheckBox;
class QLineEdit;

namespace Ui {
class frm3DWell;
}

namespace velk {

class WellPicture;

/// The well in three dimensions: turned, moved and zoomed by boxes, bars and the mouse, spun, printed.
class frm3DWell : public QDialog {
  Q_OBJECT

 public:
  frm3DWell(WindowHost& host, const WellAccess& access);
  ~frm3DWell() override;

  /// Shows the path as it is now, where the window draws by itself.
  void Refresh();

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void ConnectControls();
  void ConnectMouse();
  void MakeMenus();
  void LookAtAll();
  WellView ReadView() const;
  double Value(int box) const;
  void SetValue(int box, double value);

  void cmdRedraw_Click();
  void DrawSoon();
  void Bars_Change();
  void Boxes_Change();
  void UpDown1_Change(int steps);
  void cmdScroll_Change(int choice);
  void Timer1_Timer();
  void mnuPrint_Click();

  WindowHost& host_;
  const WellAccess access_;
  std::unique_ptr<Ui::frm3DWell> ui_;
  std::array<QLineEdit*, 9> text1_{};
  std::array<QCheckBox*, kWellSurfaces> check1_{};
  WellPicture* picture_;
  QAction* mnuPrint_ = nullptr;
  QAction* mnuRedrawTrue_ = nullptr;
  std::unique_ptr<Timer> timer1_;
  WellScene scene_;
};

}  // namespace velk
