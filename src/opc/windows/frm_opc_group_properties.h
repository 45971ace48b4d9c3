#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "i18n/windows/window_host.h"

namespace Ui {
class frmOPCGroupProperties;
}

namespace velk {

/// What the properties of a group begin with.
struct OpcGroupShown {
  std::string name;
  std::int32_t updateRate = 0;  ///< milliseconds
  float deadBand = 0;           ///< percent
  bool isActive = true;
  std::string itemsWithoutRange = {};  ///< for which a deadband is none; empty: there are no such
};

/// The properties of a group; its name stays.
class frmOPCGroupProperties : public QDialog {
  Q_OBJECT

 public:
  /// False where the server refused one of them, which has shown its box.
  using Set = std::function<bool(std::int32_t updateRate, float deadBand, bool active)>;

  frmOPCGroupProperties(WindowHost& host, const OpcGroupShown& group, Set set);
  ~frmOPCGroupProperties() override;

 private:
  void OkButton_Click();

  WindowHost& host_;
  const Set set_;
  std::unique_ptr<Ui::frmOPCGroupProperties> ui_;
};

}  // namespace velk
