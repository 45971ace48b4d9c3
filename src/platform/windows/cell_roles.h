#pragma once

#include <qnamespace.h>

namespace velk {

/// What a cell's delegate asks besides the toolkit's own roles.
enum CellRole {
  FaultRole = Qt::UserRole,  ///< bool: it keeps the grid from being taken
  HintRole,                  ///< bool: something is remarkable about it, and it may stand
  ColourRole,                ///< QColor that fills the cell; invalid for a cell of text
};

}  // namespace velk
