#include "exchange/write_xml.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "base/text.h"
#include "exchange/field_text.h"
#include "exchange/text_encoding.h"
#include "platform/files/output_file.h"

namespace velk {

namespace {

constexpr const char* kRoot =
    "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\r\n"
    "\txmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\r\n"
    "\txmlns:rs='urn:schemas-microsoft-com:rowset'\r\n"
    "\txmlns:z='#RowsetSchema'>\r\n";

/// In the place of what no XML may hold.
constexpr const char* kReplaced = "\xEF\xBF\xBD";

const char* TypeOf(FieldKind kind) {
  switch (kind) {
    case FieldKind::Date:
    case FieldKind::Time:
    case FieldKind::Moment:
      return "dt:type='dateTime' rs:dbtype='variantdate' dt:maxLength='16' rs:fixedlength='true'";
    case FieldKind::Integer:
      return "dt:type='int' dt:maxLength='4' rs:precision='10' rs:fixedlength='true'";
    case FieldKind::SmallInteger:
      return "dt:type='i2' dt:maxLength='2' rs:precision='5' rs:fixedlength='true'";
    case FieldKind::Number:
      return "dt:type='float' dt:maxLength='8' rs:precision='15' rs:fixedlength='true'";
    case FieldKind::Text:
      return "dt:type='string' dt:maxLength='50'";
    case FieldKind::LongText:
      break;
  }
  return "dt:type='string' dt:maxLength='536870910' rs:long='true'";
}

std::string AttributeType(const Column& column, std::size_t number) {
  const std::string name = XmlName(column.name);
  std::string text = "\t\t<s:AttributeType name='" + name + "'";
  if (name != column.name) text += " rs:name='" + XmlText(column.name) + "'";
  text += " rs:number='" + std::to_string(number) + "' rs:nullable='true' rs:writeunknown='true'>\r\n";
  return text + "\t\t\t<s:datatype " + TypeOf(KindOf(column)) + "/>\r\n\t\t</s:AttributeType>\r\n";
}

std::string Schema(const std::vector<Column>& columns) {
  std::string text =
      "<s:Schema id='RowsetSchema'>\r\n"
      "\t<s:ElementType name='row' content='eltOnly' rs:updatable='true'>\r\n";
  std::size_t number = 0;
  for (const Column& column : columns) text += AttributeType(column, ++number);
  return text + "\t\t<s:extends type='rs:rowbase'/>\r\n\t</s:ElementType>\r\n</s:Schema>\r\n";
}

/// One column in the rows.
struct Attribute {
  std::string opening;  ///< " Depth='"
  FieldText text;
};

struct Letters {
  char32_t first;
  char32_t last;
};
/// Readers of XML agree that these begin names; of other letters some know more and some know fewer.
constexpr Letters kLetters[] = {{'A', 'Z'},     {'_', '_'},     {'a', 'z'},     {0xC0, 0xD6},
                                {0xD8, 0xF6},   {0xF8, 0xFF},   {0x401, 0x40C}, {0x40E, 0x44F},
                                {0x451, 0x45C}, {0x45E, 0x481}, {0x490, 0x4C4}};

bool BelongsToName(char32_t c, bool first) {
  const bool isLetter = std::any_of(std::begin(kLetters), std::end(kLetters),
                                    [c](const Letters& some) { return c >= some.first && c <= some.last; });
  return isLetter || (!first && ((c >= '0' && c <= '9') || c == '-' || c == '.'));
}

/// Sound UTF-8, whatever came.
std::string SoundText(std::string_view text) {
  return IsUtf8(text) ? std::string(text) : ToUtf8(text, CodePage::Western);
}

/// The code of the character at the front of a sound text.
char32_t PointAt(std::string_view text, std::size_t bytes) {
  const auto lead = static_cast<unsigned char>(text[0]);
  char32_t point = bytes == 1 ? lead : lead & (0x7FU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) point = point << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  return point;
}

void AppendAttribute(std::string& to, Attribute& attribute, const Command& row, int column, std::string& text) {
  text.clear();
  attribute.text.AppendTo(text, row, column);
  const FieldValue empty;
  if (text.empty() && row.Field(column) == empty) return;
  to += attribute.opening;
  const bool isText = attribute.text.Kind() == FieldKind::Text || attribute.text.Kind() == FieldKind::LongText ||
                      text.find_first_of("<>&'\"") != std::string::npos;
  to += isText ? XmlText(text) : text;
  to += '\'';
}

}  // namespace

std::string XmlName(std::string_view name) {
  std::string escaped;
  const std::string sound = SoundText(name);
  for (std::string_view rest = sound; !rest.empty();) {
    const std::string character = Left(rest, 1);
    const char32_t point = PointAt(character, character.size());
    const bool looksEscaped = rest.starts_with("_x");
    if (BelongsToName(point, escaped.empty()) && !looksEscaped) {
      escaped += character;
    } else {
      char code[16];
      std::snprintf(code, sizeof code, point > 0xFFFF ? "_x%08X_" : "_x%04X_", static_cast<unsigned>(point));
      escaped += code;
    }
    rest.remove_prefix(character.size());
  }
  return escaped;
}

std::string XmlText(std::string_view text) {
  std::string escaped;
  // Two codes are no characters, and no XML may hold them.
  const std::string sound =
      ReplaceAll(ReplaceAll(SoundText(text), "\xEF\xBF\xBE", kReplaced), "\xEF\xBF\xBF", kReplaced);
  for (const char character : sound) {
    const auto c = static_cast<unsigned char>(character);
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '\'':
        escaped += "&apos;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\t':
        escaped += "&#x9;";
        break;
      case '\n':
        escaped += "&#xA;";
        break;
      case '\r':
        escaped += "&#xD;";
        break;
      default:
        if (c < 0x20)
          escaped += kReplaced;
        else
          escaped += character;
    }
  }
  return escaped;
}

void WriteXml(const ExportSource& source, const std::string& path, LongTask& task) {
  OutputFile file(path);
  std::vector<int> fields;
  std::vector<Attribute> attributes;
  for (const Column& column : source.Fields()) {
    fields.push_back(static_cast<int>(fields.size()));
    attributes.push_back({" " + XmlName(column.name) + "='", FieldText(KindOf(column), true)});
  }
  file.Put(kRoot + Schema(source.Fields()) + "<rs:data>\r\n");
  const auto make = [&]() -> ExportSource::RowText {
    return [attributes, text = std::string()](const Command& row, std::string& line) mutable {
      line += "\t<z:row";
      for (std::size_t i = 0; i < attributes.size(); ++i)
        AppendAttribute(line, attributes[i], row, static_cast<int>(i), text);
      line += "/>\r\n";
    };
  };
  source.Write(fields, make, file, task);
  file.Put("</rs:data>\r\n</xml>\r\n");
  file.Complete();
}

}  // namespace velk
