#pragma once

#include <QWidget>

namespace velk {

/// Makes a window as wide as its title takes, as far as the screen has room.
void FitToTitle(QWidget& window);

}  // namespace velk
