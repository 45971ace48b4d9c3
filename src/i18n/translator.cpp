#include "i18n/translator.h"

#include <exception>

#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk {

bool clstranslation::Load(const std::string& databasePath, const std::string& language) {
  messages_.reset();
  try {
    const auto connection = OpenLanguageFile(databasePath);
    Command rows(*connection, "SELECT Id,txtMessage,translatable," + QuoteName(language) + " FROM Messages;");
    auto messages = std::make_shared<std::unordered_map<std::int64_t, cLanguagMesg>>();
    while (rows.Next()) messages->emplace(rows.Integer(0), ReadLanguageMessage(rows, 1));
    messages_ = std::move(messages);
    return true;
  } catch (const std::exception&) {  // whatever is wrong with the file, the program goes on in English
    return false;
  }
}

std::string clstranslation::Translate(std::string_view englishText, int messageNumber) const {
  if (!messages_) return std::string(englishText);
  const auto found = messages_->find(messageNumber);
  return found == messages_->end() || found->second.Text.empty() ? std::string(englishText) : found->second.Text;
}

}  // namespace velk
