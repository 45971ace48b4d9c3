#pragma once

#include <QString>

/// What stands on the screen and can be worked, as a line of JSON: widgets, items of menus and cells of grids and
/// lists. Each has window, class, name, text and x, y, w, h in pixels of the screen, a cell its row and column, a
/// widget whether it has the focus. What stands below a modal window, and what is disabled, is left out.
QString Listing();
