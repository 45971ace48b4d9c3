#pragma once

#include <QSize>
#include <QWidget>

namespace velk {

/// The size, in pixels, of so many letters side by side and lines below each other in the font of a window, and no more
/// than its screen has room for. Windows that begin at it show as much where the desktop's letters are large.
QSize LetterSize(const QWidget& window, int letters, int lines);

}  // namespace velk
