#include "i18n/translator.h"

namespace velk {

std::string clstranslation::Translate(std::string_view englishText, int) const {
  return std::string(englishText);
}

}  // namespace velk
