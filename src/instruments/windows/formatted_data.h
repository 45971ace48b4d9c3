#pragma once

#include <QDialog>
#include <memory>

#include "i18n/translation.h"
#include "instruments/setup/separators.h"
#include "platform/dialogs/dialogs.h"

namespace Ui {
class FormattedData;
}

namespace velk {

/// Edits what divides the lines of an instrument that sends by itself.
class FormattedData : public QDialog {
  Q_OBJECT

 public:
  FormattedData(const Separators& separators, Dialogs& dialogs, const Translation& translation,
                QWidget* parent = nullptr);
  ~FormattedData() override;

  const Separators& Chosen() const;

 private:
  std::unique_ptr<Ui::FormattedData> ui_;
};

}  // namespace velk
