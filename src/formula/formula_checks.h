#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/language.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

/// What CompleteBrackets and TextFault find.
struct FormulaFault {
  enum Kind { None, BracketNumbersDiffer, RightBracketFirst, NotValid };
  Kind kind = None;
  std::string rest;  ///< NotValid: what is left when everything valid is taken out
};

/// Adds the number of ")" to `rightCount`. One that is missing is put at the end of the formula, and `rightCount`
/// becomes the number of "("; any other difference between the two is a fault.
FormulaFault CompleteBrackets(std::string& formula, int& rightCount);

/// Whether a text is made of words of the language, numbers, references, blanks and commas. Says nothing of their
/// order.
FormulaFault TextFault(std::string formula);

/// Who hears of the faults of a formula that is being entered.
struct FormulaReport {
  Dialogs& dialogs;
  const Language& language;  ///< of the names of new channels
  std::function<void()> beep;
  std::function<void()> added = [] {};  ///< a channel was added: it is to be kept
};

/// CompleteBrackets with its message. Gives true when the formula failed.
bool CheckBrackets(const FormulaReport& report, std::string& formula, int& rightCount);

/// TextFault with a beep and its message. Gives true when the formula failed.
bool CheckFormulaText(const FormulaReport& report, std::string_view formula);

}  // namespace velk
