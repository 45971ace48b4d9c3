#pragma once

#include <optional>

#include "model/parameter.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

// What a click on the chart asks about a curve. Each gives the curve as it was answered, or nothing where it stays as
// it is: on Cancel, for an empty answer, for a scale upside down, which it tells. The curve is taken by value, since
// events run while the question stands.

using CurveQuestion = std::optional<Parameter> (*)(Dialogs& dialogs, Parameter curve);

std::optional<Parameter> AskMinimum(Dialogs& dialogs, Parameter curve);
std::optional<Parameter> AskMaximum(Dialogs& dialogs, Parameter curve);
std::optional<Parameter> AskCurveColour(Dialogs& dialogs, Parameter curve);
std::optional<Parameter> AskName(Dialogs& dialogs, Parameter curve);
std::optional<Parameter> AskUnits(Dialogs& dialogs, Parameter curve);
std::optional<Parameter> AskFormat(Dialogs& dialogs, Parameter curve);

}  // namespace velk
