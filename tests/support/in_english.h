#pragma once

#include <string>
#include <vector>

#include "base/language.h"
#include "i18n/translation.h"

namespace velk::test {

/// What a program has that has loaded no other language.
inline const Language& English() {
  static const Language english;
  return english;
}
inline const Translation& EnglishWindows() {
  static const Translation english;
  return english;
}

/// A language in which each text of the message database stands in angle brackets.
class InBrackets : public Language {
 public:
  std::string Translate(std::string_view english, int) const override { return "<" + std::string(english) + ">"; }
};

/// The texts as an operator is shown them where no other language is set.
inline std::vector<std::string> InEnglish(const std::vector<OperatorText>& texts) {
  std::vector<std::string> english;
  for (const OperatorText& text : texts) english.push_back(text.English());
  return english;
}

}  // namespace velk::test
