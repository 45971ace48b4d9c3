#pragma once

#include <string>
#include <string_view>

#include "base/operator_text.h"

namespace velk {

/// The language that the operator reads. This one is English, which stands in the sources; i18n loads others.
class Language {
 public:
  virtual ~Language() = default;

  /// The text to show for an English text and its number in the message database.
  virtual std::string Translate(std::string_view englishText, int messageNumber) const;

  /// A text as it is shown to the operator.
  std::string In(const OperatorText& text) const;
};

}  // namespace velk
