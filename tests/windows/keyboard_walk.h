#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "support/window_texts.h"

namespace velk::test {

/// Where Tab leads in a window that is shown: each control once, from the one that has the keyboard on.
std::vector<QWidget*> TabStops(QWidget& window);

/// Controls that are on and that no Tab, nor an arrow key inside a group of options, leads to.
Faults ControlsOutOfReach(QWidget& window);

/// Steps of Tab that lead up or to the left. One is free: from the last control back to the first.
Faults StepsBackward(QWidget& window);

/// Labels that mark a letter without a control that gets the keyboard by it, and fields without a name that a reader of
/// the screen could tell.
Faults FieldsWithoutAName(const QWidget& window);

}  // namespace velk::test
