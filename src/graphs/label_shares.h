#pragma once

namespace velk {

/// What the texts of a panel of labels need, in pixels: the widest of each column.
struct LabelNeeds {
  double value = 0;
  double mark = 0;  ///< of an alarm, left of the value
  double units = 0;
};

/// Widths of the columns of a panel of labels, in pixels.
struct LabelShares {
  int name = 0;
  int value = 0;
  int units = 0;
};

/// Shares out `room` pixels, the gaps taken off. The value gets 1.15 times what it needs, and room for
/// its mark, the units what they need, up
/// to a share, and the name the rest. Where that is too little the name gives way first, then the units, then the room
/// around the value; a value is narrower than its text only where the whole panel is.
LabelShares ShareLabels(int room, const LabelNeeds& needs);

}  // namespace velk
