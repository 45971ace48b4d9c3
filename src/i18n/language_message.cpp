#include "i18n/language_message.h"

#include <cstdint>
#include <filesystem>
#include <variant>

#include "base/errors.h"
#include "base/text.h"

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

std::int64_t Pragma(const Connection& connection, const char* name) {
  Command command(connection, std::string("PRAGMA ") + name);
  return command.Next() ? command.Integer(0) : 0;
}

}  // namespace

std::shared_ptr<Connection> OpenLanguageFile(const std::string& path) {
  auto connection = Connection::Open(path, OpenMode::ReadOnly);
  const auto size = static_cast<std::int64_t>(std::filesystem::file_size(path));
  if (size < Pragma(*connection, "page_count") * Pragma(*connection, "page_size"))
    throw RuntimeError(ErrorNumber::NotADatabase);
  return connection;
}

cLanguagMesg ReadLanguageMessage(const Command& rows, int first) {
  return {.Text = rows.Text(first + 2), .English = rows.Text(first), .Transelate = Flag(rows.Field(first + 1))};
}

}  // namespace velk
