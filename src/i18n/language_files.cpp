#include "i18n/language_files.h"

#include <filesystem>
#include <system_error>

#include "platform/file_errors.h"
#include "platform/text.h"

namespace velk {

namespace {

/// Users bring files from systems where names that differ in case are the same; the exact name goes first.
std::string FindInFolder(const std::string& folder, const std::string& name) {
  std::string exact = folder + "/" + name;
  if (FileExists(exact)) return exact;
  std::error_code error;
  std::filesystem::directory_iterator file(folder, error);
  for (; !error && file != end(file); file.increment(error))
    if (LowerCase(file->path().filename().string()) == LowerCase(name)) return file->path().string();
  return exact;
}

}  // namespace

std::string LoadLanguage(const std::string& programFolder, const std::string& language, clstranslation& translator,
                         clsLanguages& languages) {
  translator = {};
  languages = {};
  if (language == kEnglish) return kEnglish;
  const std::string captions = FindInFolder(programFolder, kCaptionsFile);
  const std::string messages = FindInFolder(programFolder, kMessagesFile);
  if (!FileExists(captions) || !FileExists(messages)) return kEnglish;
  if (!languages.Load(captions, language)) return kEnglish;
  translator.Load(messages, language);
  return language;
}

}  // namespace velk
