#pragma once

#include "platform/drawing/surface.h"

namespace velk {

// The grid of a page or of a block of it, in twips.

/// A count of rows or labels to draw: beyond one a twip they can't be told apart, and odd settings would ask for
/// billions.
int BoundedCount(double count, double height);

/// Nine grey columns that cut the plot into ten.
void DrawColumns(Surface& plot, double y1, double y2);

/// Rows 0 to `count` from `top` on, every third black, the others grey; none above the plot.
void DrawRows(Surface& plot, double top, double step, int count);

/// A time as "hh:mm" left of the axis, its middle at y.
void PrintTimeLabel(Surface& axis, double time, double y);

}  // namespace velk
