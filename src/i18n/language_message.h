#pragma once

#include <memory>
#include <string>

#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

/// One text of a translation file.
struct cLanguagMesg {
  std::string Text;  ///< in the language that is loaded; empty where the file has none
  std::string English;
  bool Transelate = false;  ///< the row is to be translated
};

/// Opens a translation file for reading. Raises as Connection::Open does, and NotADatabase where the end is missing:
/// the engine would read zero bytes in its place, and those would be shown as texts.
std::shared_ptr<Connection> OpenLanguageFile(const std::string& path);

/// The present row of a statement whose columns from `first` on are English, the flag and the language. Nulls come as
/// empty texts and as a flag that is not set.
cLanguagMesg ReadLanguageMessage(const Command& rows, int first);

}  // namespace velk
