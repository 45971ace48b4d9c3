#include "platform/dialogs/procedure.h"

namespace velk {

Failure FailureOf(const std::exception& error) {
  const auto* const known = dynamic_cast<const RuntimeError*>(&error);
  return {TextOf(error), known != nullptr ? known->Number() : ErrorNumber::Internal};
}

Answer ShowProcedureError(const Report& report, const Failure& failure, Buttons buttons) {
  if (report.pause && report.pause->StaysAway(failure)) return Answer::Cancel;
  const OperatorText shown = failure.text + " - " + report.procedure;
  const Answer answer = report.dialogs.ProcedureError(
      report.procedure, {shown, report.title, buttons, BoxIcon::Exclamation, failure.number});
  if (report.pause) report.pause->WasAnswered(failure, answer);
  return answer;
}

}  // namespace velk
