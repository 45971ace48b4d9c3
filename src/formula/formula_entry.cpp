#include "formula/formula_entry.h"

#include "base/text.h"
#include "formula/additional_parameters.h"
#include "formula/texts.h"

namespace velk {

bool AddFormula(Session& session, const FormulaReport& report, std::string text,
                const std::function<void(const std::string&)>& putBack) {
  text = LowerCase(text);
  int rightCount = 0;
  if (CheckBrackets(report, text, rightCount)) return false;
  putBack(text);
  if (CheckFormulaText(report, text)) return false;
  if (!HasRoomForAdditional(session, 1)) {
    report.dialogs.Message(
        {.text = text::NoRoomForParameter, .title = text::FormulaCalculator, .icon = BoxIcon::Exclamation});
    return false;
  }
  return ReadFormulae(session, report, text);
}

std::string FormulaOf(const Session& session, int parameter) {
  const int index = parameter - session.NumberOfParameters;
  if (index < 1 || index > session.NumberOfFormulae) return {};
  return session.Formula[index];
}

}  // namespace velk
