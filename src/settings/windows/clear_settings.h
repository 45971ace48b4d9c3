#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "settings/clear_sections.h"

namespace Ui {
class ClearSettings;
}

namespace velk {

/// Asks which groups of the settings are to be cleared.
class ClearSettings : public QDialog {
  Q_OBJECT

 public:
  explicit ClearSettings(WindowHost& host);
  ~ClearSettings() override;

  GroupChoice Answer() const;

 private:
  std::unique_ptr<Ui::ClearSettings> ui_;
};

}  // namespace velk
