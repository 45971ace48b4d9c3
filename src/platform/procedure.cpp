#include "platform/procedure.h"

namespace velk {

Answer ShowProcedureError(const Report& report, const std::string& text, Buttons buttons) {
  std::string shown = text + " - " + report.procedure;
  try {
    if (report.beforeBox) report.beforeBox();
  } catch (const std::exception& error) {
    // An error thrown on from here would leave the event loop, and the program with it.
    shown += std::string("\n") + error.what();
  }
  return report.dialogs.ProcedureError(report.procedure, {shown, report.title, buttons, BoxIcon::Exclamation});
}

}  // namespace velk
