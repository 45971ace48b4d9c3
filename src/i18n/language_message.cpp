#include "i18n/language_message.h"

#include <cstdint>
#include <variant>

#include "platform/text.h"

namespace velk {

namespace {

/// A yes/no field: 1, -1 and "True" are what tools write into it that convert such a file from elsewhere.
bool Flag(const FieldValue& field) {
  struct Reader {
    bool operator()(std::monostate) const { return false; }
    bool operator()(std::int64_t number) const { return number != 0; }
    bool operator()(double number) const { return number != 0; }
    bool operator()(const std::string& text) const {
      const std::string word = LowerCase(text);
      return word == "true" || word == "yes" || word == "1" || word == "-1";
    }
  };
  return std::visit(Reader{}, field);
}

}  // namespace

cLanguagMesg ReadLanguageMessage(const Command& rows, int first) {
  return {.Text = rows.Text(first + 2), .English = rows.Text(first), .Transelate = Flag(rows.Field(first + 1))};
}

}  // namespace velk
