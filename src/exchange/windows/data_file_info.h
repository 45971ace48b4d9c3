#pragma once

#include <QDialog>
#include <memory>

#include "exchange/csv_file.h"
#include "i18n/windows/window_host.h"

namespace Ui {
class DataFileInfo;
}

namespace velk {

/// Where a screen of an import leads to.
enum class WizardStep { Back, Next };

/// The second screen of an import: what the first line of the file says.
class DataFileInfo : public QDialog {
  Q_OBJECT

 public:
  DataFileInfo(WindowHost& host, const CsvFile& file);
  ~DataFileInfo() override;

  WizardStep Answer() const { return step_; }

 private:
  void Leave(WizardStep step);

  std::unique_ptr<Ui::DataFileInfo> ui_;
  WizardStep step_ = WizardStep::Next;
};

}  // namespace velk
