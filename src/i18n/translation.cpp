#include "i18n/translation.h"

#include <filesystem>
#include <system_error>

#include "base/text.h"
#include "platform/files/file_errors.h"

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

std::string Translation::Load(const std::string& programFolder, const std::string& language) {
  Translator = {};
  Languages = {};
  if (language == kEnglish) return kEnglish;
  const std::string captions = FindInFolder(programFolder, kCaptionsFile);
  const std::string messages = FindInFolder(programFolder, kMessagesFile);
  if (!FileExists(captions) || !FileExists(messages)) return kEnglish;
  if (!Languages.Load(captions, language)) return kEnglish;
  Translator.Load(messages, language);
  return language;
}

}  // namespace velk
