#pragma once

#include "exchange/live_import.h"
#include "settings/curve_properties.h"

namespace velk {

/// What the dialog of a curve's properties edits of a followed field.
CurveProperties PropertiesOf(const LiveField& field);
void StoreProperties(LiveField& field, const CurveProperties& properties);

}  // namespace velk
