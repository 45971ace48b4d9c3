#include "instruments/unit/unit_questions.h"

#include <cmath>

#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text.h"
#include "instruments/texts.h"
#include "instruments/unit/unit_table.h"
#include "model/texts.h"

namespace velk {

std::optional<double> AskUnitNumber(Dialogs& dialogs, const OperatorText& prompt, const OperatorText& title,
                                    const std::string& preset) {
  std::string offered = preset;
  for (;;) {
    const auto reply = dialogs.Input(prompt, title, offered);
    if (!reply || Trim(*reply).empty()) return std::nullopt;
    if (IsNumeric(WithDecimalPoint(*reply))) return Val(WithDecimalPoint(Trim(*reply)));
    const MessageText& fault = IsUnclearNumber(*reply) ? text::NumberUnclear : text::NotANumber;
    dialogs.Message({fault, title, Buttons::Ok, BoxIcon::Exclamation});
    offered = *reply;
  }
}

bool MaySend(Dialogs& dialogs, double value) {
  if (!std::isfinite(value)) throw RuntimeError(ErrorNumber::Overflow);
  const std::string number = NumberText(value);
  if (!HasExponent(number)) return true;
  return dialogs.Message({.text = number + text::ReadsBackOther,
                          .buttons = Buttons::YesNo,
                          .icon = BoxIcon::Exclamation,
                          .safeDefault = true}) == Answer::Yes;
}

}  // namespace velk
