#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "i18n/language_message.h"
#include "i18n/messages.h"

namespace velk {

/// Gives the texts to show. With no message database loaded every text is the English one. A copy shares the table.
class clstranslation {
 public:
  /// Takes over the table `Messages` of a message database, from its column named as the language. False, and English,
  /// where the file, the table or the column is missing or can't be read; no error is raised.
  bool Load(const std::string& databasePath, const std::string& language);

  /// The text to show for an English text and its number in the message database.
  std::string Translate(std::string_view englishText, int messageNumber) const {
    return std::string(View(englishText, messageNumber));
  }

  std::string Translate(MessageId id) const { return std::string(View(id)); }

  /// The same without a copy, for what is compared with every line. It holds until the next Load.
  std::string_view View(MessageId id) const {
    return messages_ ? View(EnglishText(id), static_cast<int>(id)) : EnglishText(id);
  }

 private:
  std::string_view View(std::string_view englishText, int messageNumber) const;

  std::shared_ptr<const std::unordered_map<std::int64_t, cLanguagMesg>> messages_;
};

}  // namespace velk
