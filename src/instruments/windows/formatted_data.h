#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "instruments/setup/separators.h"

namespace Ui {
class FormattedData;
}

namespace velk {

/// Edits what divides the lines of an instrument that sends by itself.
class FormattedData : public QDialog {
  Q_OBJECT

 public:
  FormattedData(WindowHost& host, const Separators& separators);
  ~FormattedData() override;

  const Separators& Answer() const;

 private:
  std::unique_ptr<Ui::FormattedData> ui_;
};

}  // namespace velk
