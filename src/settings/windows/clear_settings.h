#pragma once

#include <QDialog>
#include <memory>

#include "i18n/translation.h"
#include "settings/settings_questions.h"

namespace Ui {
class ClearSettings;
}

namespace velk {

/// Asks which groups of the settings are to be cleared.
class ClearSettings : public QDialog {
  Q_OBJECT

 public:
  explicit ClearSettings(const Translation& translation, QWidget* parent = nullptr);
  ~ClearSettings() override;

  GroupChoice Choice() const;

 private:
  std::unique_ptr<Ui::ClearSettings> ui_;
};

}  // namespace velk
