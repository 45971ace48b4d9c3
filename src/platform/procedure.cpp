#include "platform/procedure.h"

namespace velk {

Answer ShowProcedureError(const Report& report, const OperatorText& text, Buttons buttons) {
  OperatorText shown = text + " - " + report.procedure;
  try {
    if (report.beforeBox) report.beforeBox();
  } catch (const std::exception& error) {
    // An error thrown on from here would leave the event loop, and the program with it.
    shown += "\n" + TextOf(error);
  }
  return report.dialogs.ProcedureError(report.procedure,
                                       {report.dialogs.InLanguage(shown), report.title, buttons, BoxIcon::Exclamation});
}

}  // namespace velk
