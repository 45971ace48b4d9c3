#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "settings/clear_sections.h"

namespace Ui {
class ClearSettings;
}

namespace velk {

/// What was chosen in ClearSettings.
struct ClearChoice {
  GroupChoice groups{};
  bool takeBack = false;  ///< what was cleared last comes back instead
};

/// Asks which groups of the settings are to be cleared, and offers what was cleared before back.
class ClearSettings : public QDialog {
  Q_OBJECT

 public:
  ClearSettings(WindowHost& host, bool canTakeBack);
  ~ClearSettings() override;

  ClearChoice Answer() const;

 private:
  std::unique_ptr<Ui::ClearSettings> ui_;
  bool takesBack_ = false;
};

}  // namespace velk
