#include "base/single.h"

#include "base/errors.h"
#include "base/number_text.h"

namespace velk {

float ThroughText(double value) {
  return ToSingle(ThroughNumberText(value));
}

}  // namespace velk
