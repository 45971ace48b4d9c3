#pragma once

#include "i18n/translator.h"
#include "platform/windows/qt_dialogs.h"

namespace velk {

/// What the boxes' buttons and titles show in the language that is loaded; for QtDialogs::SetTexts.
DialogTexts DialogTextsIn(const clstranslation& translator);

}  // namespace velk
