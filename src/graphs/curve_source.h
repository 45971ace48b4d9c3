#pragma once

#include "model/parameter.h"

namespace velk {

/// The curves of one chart, counted from 1: name, units, scale and colour of each. A strip chart asks it for its
/// header, a page for its columns.
class CurveSource {
 public:
  virtual ~CurveSource() = default;
  virtual int Count() const = 0;
  virtual const Parameter& Curve(int slot) const = 0;
};

}  // namespace velk
