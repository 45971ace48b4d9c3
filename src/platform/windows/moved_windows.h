#pragma once

#include <QtGlobal>

namespace velk {

/// Has windows that are moved within another painted anew; to be called before the application exists. The toolkit
/// would have the display copy their dots instead, and where one lies over another some copies are of what stood there
/// before: old digits would stay on the screen until their value changes.
inline void PaintMovedWindows() {
  qputenv("QT_NO_FAST_MOVE", "1");
}

}  // namespace velk
