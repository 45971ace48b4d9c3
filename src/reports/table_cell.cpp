#include "reports/table_cell.h"

#include <cmath>

#include "base/numbers.h"

namespace velk {

std::string FormatByMagnitude(double value) {
  const double size = std::abs(value);
  if (size <= 10) return Format(value, "#0.000");
  if (size <= 100) return Format(value, "#0.00");
  if (size <= 1000) return Format(value, "#0.0");
  return Format(value, "#0,000");
}

}  // namespace velk
