#pragma once

#include <QWidget>

#include "i18n/translation.h"

namespace velk {

/// Shows a window in the language that is loaded; the last thing that each window does while it loads. What has no
/// translation keeps the text of its design.
///
/// A caption stands under the window's name, "_" and the control's name; an element of a control array is named with
/// its index (`chk_3`). A tool tip stands under the same with "_T_" in place of the first "_". Buttons of a toolbar
/// stand under the toolbar's name, "_" and their index from 1, separators counted. Windows inside the window translate
/// themselves.
void TranslateForm(QWidget& form, const Translation& translation);

}  // namespace velk
