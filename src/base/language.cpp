#include "base/language.h"

namespace velk {

std::string Language::Translate(std::string_view englishText, int) const {
  return std::string(englishText);
}

std::string Language::In(const OperatorText& text) const {
  return text.In([this](std::string_view english, int number) { return Translate(english, number); });
}

}  // namespace velk
