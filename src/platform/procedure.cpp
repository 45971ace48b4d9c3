#include "platform/procedure.h"

namespace velk {

Answer ShowProcedureError(const Report& report, const std::string& text, Buttons buttons) {
  if (report.beforeBox) report.beforeBox();
  return report.dialogs.ProcedureError(report.procedure,
                                       {text + " - " + report.procedure, report.title, buttons, BoxIcon::Exclamation});
}

}  // namespace velk
