#include "graphs/external_curves.h"

namespace velk {

void ExternalCurves::Follow(const LiveImport& live) {
  curves_.clear();
  for (const LiveField& field : live.Fields) curves_.push_back(CurveOf(field));
}

Parameter CurveOf(const LiveField& field) {
  Parameter curve;
  curve.name = field.DisplayName;
  curve.units = field.Unit;
  curve.min = field.min;
  curve.max = field.max;
  curve.color = field.Colour;
  curve.format = field.format;
  curve.Wrapping = field.Wrapping;
  curve.GraphVisible = true;
  return curve;
}

void StoreCurve(const Parameter& curve, LiveField& field) {
  field.DisplayName = curve.name;
  field.Unit = curve.units;
  field.min = curve.min;
  field.max = curve.max;
  field.Colour = curve.color;
  field.format = curve.format;
}

}  // namespace velk
