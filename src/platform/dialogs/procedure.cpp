#include "platform/dialogs/procedure.h"

namespace velk {

Failure FailureOf(const std::exception& error) {
  const auto* const known = dynamic_cast<const RuntimeError*>(&error);
  return {TextOf(error), known != nullptr ? known->Number() : ErrorNumber::Internal};
}

Answer ShowProcedureError(const Report& report, const Failure& failure, Buttons buttons) {
  OperatorText shown = failure.text + " - " + report.procedure;
  try {
    if (report.beforeBox) report.beforeBox();
  } catch (const std::exception& error) {
    // An error thrown on from here would leave the event loop, and the program with it.
    shown += "\n" + TextOf(error);
  }
  return report.dialogs.ProcedureError(report.procedure,
                                       {shown, report.title, buttons, BoxIcon::Exclamation, failure.number});
}

}  // namespace velk
