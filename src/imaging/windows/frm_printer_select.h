#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"
#include "imaging/printer_choice.h"

namespace Ui {
class frmPrinterSelect;
}

namespace velk {

/// Chooses among the printers. A click on one sets it at once; leaving without Select puts back what stood before.
class frmPrinterSelect : public QDialog {
  Q_OBJECT

 public:
  /// The choice outlives the window.
  frmPrinterSelect(WindowHost& host, PrinterChoice& choice);
  ~frmPrinterSelect() override;

  /// The chosen printer.
  const std::string& Answer() const { return choice_.PrinterName(); }

 protected:
  void done(int result) override;

 private:
  void List1_Click(int row);
  void Command1_Click();

  std::unique_ptr<Ui::frmPrinterSelect> ui_;
  const Language& language_;
  PrinterChoice& choice_;
  const std::string before_;
  const std::vector<std::string> names_;
};

}  // namespace velk
