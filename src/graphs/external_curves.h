#pragma once

#include <vector>

#include "exchange/live_import.h"
#include "graphs/curve_source.h"

namespace velk {

/// The followed fields of another program's table as the curves of a chart, in their order.
class ExternalCurves : public CurveSource {
 public:
  explicit ExternalCurves(const LiveImport& live) { Follow(live); }

  /// The fields were edited, or are others.
  void Follow(const LiveImport& live);
  int Count() const override { return static_cast<int>(curves_.size()); }
  const Parameter& Curve(int slot) const override { return curves_[static_cast<std::size_t>(slot - 1)]; }

 private:
  std::vector<Parameter> curves_;
};

}  // namespace velk
