#pragma once

#include <string>
#include <vector>

#include "base/operator_text.h"

namespace velk::test {

/// The texts as an operator is shown them where no other language is set.
inline std::vector<std::string> InEnglish(const std::vector<OperatorText>& texts) {
  std::vector<std::string> english;
  for (const OperatorText& text : texts) english.push_back(text.English());
  return english;
}

}  // namespace velk::test
