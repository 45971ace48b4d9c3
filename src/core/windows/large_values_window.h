#pragma once

#include <QMenu>
#include <QWidget>
#include <functional>
#include <memory>

#include "i18n/windows/window_host.h"
#include "model/command_binder.h"
#include "model/session.h"
#include "platform/loop/clock.h"

namespace Ui {
class frmLargeValues;
}

namespace velk {

/// What the window of large values looks at.
struct LargeValuesAccess {
  Session& session;
  Clock& clock;
  std::function<void()> keepSettings;  ///< other channels were chosen
};

/// Chosen channels in digits that can be read across the cabin, with the marks of their alarms. It looks at the session
/// four times a second, so that a flood of samples costs it nothing, and blocks nothing.
class frmLargeValues : public QWidget {
  Q_OBJECT

 public:
  frmLargeValues(WindowHost& host, const LargeValuesAccess& access);
  ~frmLargeValues() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void ShowValues();
  void FillMenu();
  void Choose(int channel, bool chosen);

  std::unique_ptr<Ui::frmLargeValues> ui_;
  const Translation& words_;
  const LargeValuesAccess access_;
  QMenu* menu_;
  std::unique_ptr<Timer> look_;
};

/// Binds the command of the menu View.
void BindLargeValues(CommandBinder& commands, WindowHost& host, const LargeValuesAccess& access);

}  // namespace velk
