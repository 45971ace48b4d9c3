#include "graphs/external_curves.h"

#include "exchange/live_properties.h"

namespace velk {

void ExternalCurves::Follow(const LiveImport& live) {
  curves_.clear();
  for (const LiveField& field : live.Fields) curves_.push_back(CurveOf(field));
}

}  // namespace velk
