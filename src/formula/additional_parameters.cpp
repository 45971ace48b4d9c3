#include "formula/additional_parameters.h"

#include <algorithm>
#include <limits>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "formula/formula_value.h"
#include "formula/substitute.h"
#include "formula/texts.h"
#include "model/texts.h"

namespace velk {

namespace {

// A channel's running extremes begin beyond every real value.
constexpr double kBelowEveryValue = -99999999;
constexpr double kAboveEveryValue = 99999999;

/// Whether each reference has its channel; tells the first one that has not.
bool ReferencesExist(const Session& session, Dialogs& dialogs, std::string_view text) {
  for (std::size_t open = text.find('{'); open != std::string_view::npos; open = text.find('{', open + 1)) {
    const std::size_t close = text.find('}', open);
    if (close == std::string_view::npos) return true;
    const std::string_view name = text.substr(open + 1, close - open - 1);
    if (FindChannel(session, name) == 0) {
      dialogs.Message({.text = text::NoSuchParameterBefore + std::string(name) + text::NoSuchParameterAfter,
                       .title = {},
                       .icon = BoxIcon::Critical});
      return false;
    }
    open = close;
  }
  return true;
}

Parameter NewChannel(const Session& session, const Language& language, std::string_view formula) {
  Parameter channel;
  channel.name = language.In(text::DefaultAdditionalName) + std::to_string(session.NumberOfFormulae + 1);
  channel.units = language.In(text::DefaultUnits);
  channel.max = 100;
  channel.format = "#0.0000";
  channel.FormIndex = static_cast<std::int16_t>(session.TotalParameters + 1);
  channel.GraphVisible = true;
  channel.Gain = 1;
  channel.Wrapping = true;
  PrepareStatistics(channel, formula);
  return channel;
}

/// Takes one slot out of an array that is indexed like CurrentParameters; `last` becomes free.
template <class Slots>
void CloseUp(Slots& slots, int removed, int last) {
  last = std::min(last, kMaxParameters);
  if (removed > last) return;
  std::move(slots.begin() + removed + 1, slots.begin() + last + 1, slots.begin() + removed);
  slots[last] = {};
}

}  // namespace

void PrepareStatistics(Parameter& channel, std::string_view formula) {
  channel.AverageCount = 0;
  channel.AverageSum = channel.RunningMaximum = channel.RunningMinimum = 0;
  const std::string front = LowerCase(Left(formula, 3));
  if (front == "max") channel.RunningMaximum = kBelowEveryValue;
  if (front == "min") channel.RunningMinimum = kAboveEveryValue;
}

bool ReadFormulae(Session& session, const FormulaReport& report, const std::string& text) {
  if (!ReferencesExist(session, report.dialogs, text)) return false;
  if (!HasRoomForAdditional(session, 1)) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  PlaceBehindFile(session);
  const Parameter channel = NewChannel(session, report.language, text);
  ++session.NumberOfFormulae;
  ++session.TotalParameters;
  session.AdditionalParameters.resize(session.NumberOfFormulae + 1);
  session.AdditionalParameters.back() = channel;
  if (session.UnitParameters)
    session.AdditionalParameters.back().FormIndex =
        static_cast<std::int16_t>(*session.UnitParameters + session.NumberOfFormulae);
  session.Formula.resize(session.NumberOfFormulae + 1);
  session.Formula.back() = text;
  session.CurrentParameters[session.TotalParameters] = channel;
  return true;
}

bool HasRoomForAdditional(const Session& session, int more) {
  const int inputs = std::max<int>(session.NumberOfParameters, session.UnitParameters.value_or(0));
  return std::max<int>(session.TotalParameters, inputs + session.NumberOfFormulae) + more <= kMaxParameters;
}

bool AdditionalStandBehindInputs(const Session& session) {
  return !ShowsFile(session) || session.TotalParameters > session.NumberOfParameters;
}

void PlaceBehindFile(Session& session) {
  if (AdditionalStandBehindInputs(session)) return;
  for (int i = 1; i <= session.NumberOfFormulae; ++i) {
    const int place = session.NumberOfParameters + i;
    session.CurrentParameters[place] = session.AdditionalParameters[i];
    session.CurrentParameters[place].FormIndex = static_cast<std::int16_t>(place);
    session.CurrentValue[place] = 0;
  }
  session.TotalParameters = static_cast<std::int16_t>(session.NumberOfParameters + session.NumberOfFormulae);
}

void RemoveAdditional(Session& session, int index) {
  if (index < 1 || index > session.NumberOfFormulae) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  session.AdditionalParameters.erase(session.AdditionalParameters.begin() + index);
  session.Formula.erase(session.Formula.begin() + index);
  if (AdditionalStandBehindInputs(session)) {
    const int removed = session.NumberOfParameters + index;
    const int last = session.NumberOfParameters + session.NumberOfFormulae;
    CloseUp(session.CurrentParameters, removed, last);
    CloseUp(session.CurrentValue, removed, last);
    CloseUp(session.PreviousValue, removed, last);
    CloseUp(session.AlarmTriggered, removed, last);
    --session.TotalParameters;
  }
  --session.NumberOfFormulae;
}

float ValueOf(Session& session, int index) {
  return ValueOf(session, session.CurrentValue, session.AdditionalParameters, index);
}

float ValueOf(const Session& session, const Session::PerParameter<float>& values, std::span<Parameter> statistics,
              int index) {
  static thread_local std::string text;  // kept, so that its memory is
  try {
    const int bracketCount = SubstituteParameters(session, values, session.Formula.at(index), text);
    if (bracketCount == kValueMissing) return std::numeric_limits<float>::quiet_NaN();
    return ToSingle(FormulaValue(text, bracketCount, statistics, index));
  } catch (const RuntimeError& error) {
    throw RuntimeError(error.Number(), session.AdditionalParameters.at(index).name + ": " + error.Text());
  }
}

}  // namespace velk
