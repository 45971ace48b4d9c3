#pragma once

#include "exchange/live_import.h"
#include "model/parameter.h"
#include "settings/curve_properties.h"

namespace velk {

/// A followed field as the curve that is drawn of it.
Parameter CurveOf(const LiveField& field);
/// What was edited of its curve goes back to the field.
void StoreCurve(LiveField& field, const Parameter& curve);

/// What the dialog of a curve's properties edits of a followed field.
CurveProperties PropertiesOf(const LiveField& field);
void StoreProperties(LiveField& field, const CurveProperties& properties);

}  // namespace velk
