#pragma once

#include <QTranslator>
#include <memory>
#include <string>

namespace velk {

/// Installs the toolkit's own texts (file dialogs, colour dialogs, context menus of text boxes) in a language by its
/// English name, as `Current_language` has it. They come with the package qt6-translations-l10n. Null where the toolkit
/// has none, and for English; the texts stay until the result goes.
std::unique_ptr<QTranslator> InstallToolkitTexts(const std::string& language);

}  // namespace velk
