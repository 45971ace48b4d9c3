#include "i18n/languages.h"

#include <exception>

#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

bool clsLanguages::Load(const std::string& databasePath, const std::string& language) {
  captions_.reset();
  try {
    const auto connection = OpenLanguageFile(databasePath);
    Command rows(*connection,
                 "SELECT FormName,ControllName,English,Transelate," + QuoteName(language) + " FROM Languages;");
    auto captions = std::make_shared<Captions>();
    while (rows.Next()) captions->emplace(rows.Text(0) + "_" + rows.Text(1), ReadLanguageMessage(rows, 2));
    captions_ = std::move(captions);
    language_ = language;
    return true;
  } catch (const std::exception&) {  // whatever is wrong with the file, the program goes on in English
    return false;
  }
}

const cLanguagMesg* clsLanguages::Find(const std::string& key) const {
  if (!captions_) return nullptr;
  const auto found = captions_->find(key);
  return found == captions_->end() ? nullptr : &found->second;
}

std::optional<std::string> clsLanguages::Caption(const std::string& key) const {
  const cLanguagMesg* message = Find(key);
  if (!message || !message->Transelate || message->Text.empty()) return std::nullopt;
  return message->Text;
}

}  // namespace velk
