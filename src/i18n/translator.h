#pragma once

#include <string>
#include <string_view>

#include "i18n/messages.h"

namespace velk {

/// Gives the texts to show. With no message database loaded every text is the English one.
class clstranslation {
 public:
  /// The text to show for an English text and its number in the message database.
  std::string Translate(std::string_view englishText, int messageNumber) const;

  std::string Translate(MessageId id) const { return Translate(EnglishText(id), static_cast<int>(id)); }
};

}  // namespace velk
