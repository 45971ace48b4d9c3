#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/language.h"
#include "i18n/language_message.h"

namespace velk {

/// The texts of a message database. With none loaded every text is the English one. A copy shares the table.
class clstranslation : public Language {
 public:
  /// Takes over the table `Messages` of a message database, from its column named as the language. False, and English,
  /// where the file, the table or the column is missing or can't be read; no error is raised.
  bool Load(const std::string& databasePath, const std::string& language);

  std::string Translate(std::string_view englishText, int messageNumber) const override;

 private:
  std::shared_ptr<const std::unordered_map<std::int64_t, cLanguagMesg>> messages_;
};

}  // namespace velk
