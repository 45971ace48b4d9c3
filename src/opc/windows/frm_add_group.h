#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"

namespace Ui {
class frmAddGroup;
}

namespace velk {

/// Adds a group to a server.
class frmAddGroup : public QDialog {
  Q_OBJECT

 public:
  /// Milliseconds and percent; false where that failed, which has shown its box.
  using AddOPCGroupMain =
      std::function<bool(const std::string& name, std::int32_t updateRate, float deadBand, bool active)>;

  frmAddGroup(WindowHost& host, AddOPCGroupMain add);
  ~frmAddGroup() override;

 private:
  void AddGroup_Click();

  WindowHost& host_;
  const AddOPCGroupMain add_;
  std::unique_ptr<Ui::frmAddGroup> ui_;
};

}  // namespace velk
