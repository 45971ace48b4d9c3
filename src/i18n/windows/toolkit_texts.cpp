#include "i18n/windows/toolkit_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include "base/text_qt.h"
#include "i18n/translation.h"

namespace velk {

namespace {

/// "ru" for "Russian"; empty for a name that is no language.
QString LanguageCode(const QString& englishName) {
  for (int language = QLocale::C + 1; language <= QLocale::LastLanguage; ++language)
    if (QLocale::languageToString(QLocale::Language(language)) == englishName)
      return QLocale::languageToCode(QLocale::Language(language));
  return {};
}

}  // namespace

std::unique_ptr<QTranslator> InstallToolkitTexts(const std::string& language) {
  const QString code = LanguageCode(ToQt(language));
  if (language == kEnglish || code.isEmpty()) return nullptr;
  auto texts = std::make_unique<QTranslator>();
  if (!texts->load("qtbase_" + code, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) return nullptr;
  QCoreApplication::installTranslator(texts.get());
  return texts;
}

}  // namespace velk
