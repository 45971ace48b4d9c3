#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "i18n/windows/window_host.h"
#include "instruments/unit/hardware_tools.h"

namespace Ui {
class ORBENHardware;
}

namespace velk {

/// What the window of the tools works with.
struct OrbenHardwareWork {
  int lastChannel = 1;
  std::function<bool()> isReady;  ///< whether the unit takes commands
  /// Sends a command and shows its own boxes; gives the value that was sent, where it has one. Events run meanwhile.
  std::function<std::optional<std::string>(const UnitCommand& command, int channel, const std::string& preset)> send;
  std::function<void()> cancel;  ///< ends a calibration
};

/// Sends commands to the board of an own unit, one at a time.
class ORBENHardware : public QDialog {
  Q_OBJECT

 public:
  ORBENHardware(WindowHost& host, OrbenHardwareWork work);
  ~ORBENHardware() override;

  /// A command that is under way is ended first.
  void done(int result) override;

 private:
  const UnitCommand& Selected() const;
  void Command2_Click();
  void ShowTextBox();
  void SetBusy(bool busy);
  void ShowHint();

  WindowHost& host_;
  std::unique_ptr<Ui::ORBENHardware> ui_;
  const OrbenHardwareWork work_;
  bool busy_ = false;
  std::optional<int> closing_;  ///< the result to close with, once the command has ended
};

}  // namespace velk
