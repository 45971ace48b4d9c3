#pragma once

#include <string>

#include "i18n/languages.h"
#include "i18n/translator.h"

namespace velk {

// The two files beside the program, where users put their own.
inline constexpr const char* kCaptionsFile = "VELK Translation Data.mdb";
inline constexpr const char* kMessagesFile = "VELKMESSAGES.MDB";

/// The built-in language: what stands in the sources needs no file.
inline constexpr const char* kEnglish = "English";

/// All that is shown in the operator's language. Made once in main() and passed by reference: what is loaded later
/// counts for everybody.
struct Translation {
  clstranslation Translator;  ///< messages and words
  clsLanguages Languages;     ///< captions of the windows, see i18n/windows/translate_form.h

  /// Loads both files of the program's folder; their names may differ in case. Gives the language that is in effect:
  /// `language`, or English where a file is missing or the captions lack the language. No error is raised and nothing
  /// shown.
  std::string Load(const std::string& programFolder, const std::string& language);
};

}  // namespace velk
