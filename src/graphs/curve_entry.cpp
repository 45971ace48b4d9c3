#include "graphs/curve_entry.h"

#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/one_line.h"
#include "base/text.h"
#include "graphs/texts.h"
#include "model/parameter_questions.h"
#include "model/texts.h"

namespace velk {

namespace {

/// A number that can be read in two ways, or that is too large, is asked for again, as it was typed.
std::optional<double> AskScale(Dialogs& dialogs, const MessageText& prompt, double present) {
  std::string preset = NumberText(present);
  for (;;) {
    const auto answer = dialogs.Input(prompt, text::GraphScales, preset);
    if (!answer || Trim(*answer).empty()) return std::nullopt;
    if (const auto number = EnteredNumber(*answer)) return number;
    dialogs.Message({FaultOfNumber(*answer), text::GraphScales, Buttons::Ok, BoxIcon::Exclamation});
    preset = *answer;
  }
}

/// Whether a text was entered into `field`.
bool AskText(Dialogs& dialogs, const MessageText& prompt, std::string& field) {
  const std::string entered = OnOneLine(dialogs.Input(prompt, text::GraphsTitle, field).value_or(""));
  if (Trim(entered).empty()) return false;
  field = entered;
  return true;
}

}  // namespace

std::optional<Parameter> AskMinimum(Dialogs& dialogs, Parameter curve) {
  const auto minimum = AskScale(dialogs, text::EnterMinimum, curve.min);
  if (!minimum) return std::nullopt;
  if (*minimum >= curve.max) {
    dialogs.Message({text::MinimumNotBelow, text::GraphScales, Buttons::Ok, BoxIcon::Exclamation});
    return std::nullopt;
  }
  curve.min = *minimum;
  return curve;
}

std::optional<Parameter> AskMaximum(Dialogs& dialogs, Parameter curve) {
  const auto maximum = AskScale(dialogs, text::EnterMaximum, curve.max);
  if (!maximum) return std::nullopt;
  if (*maximum <= curve.min) {
    dialogs.Message({text::MaximumNotAboveMinimum, text::GraphScales, Buttons::Ok, BoxIcon::Exclamation});
    return std::nullopt;
  }
  curve.max = *maximum;
  return curve;
}

std::optional<Parameter> AskCurveColour(Dialogs& dialogs, Parameter curve) {
  const auto colour = AskColour(dialogs, curve.name, curve.color);
  if (!colour) return std::nullopt;
  curve.color = *colour;
  return curve;
}

std::optional<Parameter> AskName(Dialogs& dialogs, Parameter curve) {
  if (!AskText(dialogs, text::EnterName, curve.name)) return std::nullopt;
  return curve;
}

std::optional<Parameter> AskUnits(Dialogs& dialogs, Parameter curve) {
  if (!AskText(dialogs, text::EnterUnits, curve.units)) return std::nullopt;
  return curve;
}

std::optional<Parameter> AskFormat(Dialogs& dialogs, Parameter curve) {
  const auto format = AskNumberFormat(dialogs);
  if (!format) return std::nullopt;
  curve.format = *format;
  return curve;
}

}  // namespace velk
