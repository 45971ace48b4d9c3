#include "i18n/language_files.h"

#include "platform/file_errors.h"

namespace velk {

std::string LoadLanguage(const std::string& programFolder, const std::string& language, clstranslation& translator,
                         clsLanguages& languages) {
  translator = {};
  languages = {};
  const std::string captions = programFolder + "/" + kCaptionsFile;
  const std::string messages = programFolder + "/" + kMessagesFile;
  if (language == kEnglish || !FileExists(captions) || !FileExists(messages)) return kEnglish;
  if (!languages.Load(captions, language)) return kEnglish;
  translator.Load(messages, language);
  return language;
}

}  // namespace velk
