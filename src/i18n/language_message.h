#pragma once

#include <string>

#include "platform/command.h"

namespace velk {

/// One text of a translation file.
struct cLanguagMesg {
  std::string Text;  ///< in the language that is loaded; empty where the file has none
  std::string English;
  bool Transelate = false;  ///< the row is to be translated
};

/// The present row of a statement whose columns from `first` on are English, the flag and the language. Nulls come as
/// empty texts and as a flag that is not set.
cLanguagMesg ReadLanguageMessage(const Command& rows, int first);

}  // namespace velk
