#include "imaging/windows/frm_printer_select.h"
#include "model/help_topics.h"
#include "support/fake_printers.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

/// The printers, which outlive the window's job.
PrinterChoice& SampleChoice() {
  static FakePrinters system;
  static PrinterChoice choice(system);
  return choice;
}

const WindowsOf kImaging([] {
  return std::vector<ListedWindow>{
      {"frmPrinterSelect",
       "",
       topic::Printing,
       {"lblSaid", "List1"},
       [](const std::string& language) { return Hosted<frmPrinterSelect>(MakeJob(language), SampleChoice()); }},
  };
});

}  // namespace
}  // namespace velk::test
