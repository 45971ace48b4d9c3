#include "model/field_name.h"

namespace velk {

std::string CleanFieldName(std::string_view name) {
  std::string cleaned;
  for (const char character : name)
    if (static_cast<unsigned char>(character) >= 32 && std::string_view(".!'[]").find(character) == std::string::npos)
      cleaned += character;
  return cleaned;
}

}  // namespace velk
