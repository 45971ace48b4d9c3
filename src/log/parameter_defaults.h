#pragma once

#include "base/language.h"
#include "model/parameter.h"

namespace velk {

/// Gives the empty fields of channel `number` what the log needs: name, units, number format, a graph of its own, and 0
/// to 100 for a scale that was never set (both ends 0). A channel that had no name becomes visible.
void FillEmptyFields(Parameter& parameter, int number, const Language& language);

}  // namespace velk
