#include "exchange/write_xml.h"

#include <cmath>
#include <cstdio>

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

/// Letters of all languages may stand in a name; their codes are not looked at.
bool BelongsToName(unsigned char c, bool first) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80;
  return isLetter || (!first && ((c >= '0' && c <= '9') || c == '-' || c == '.'));
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
  for (std::size_t i = 0; i < name.size(); ++i) {
    const auto c = static_cast<unsigned char>(name[i]);
    const bool looksEscaped = c == '_' && i + 1 < name.size() && name[i + 1] == 'x';
    if (BelongsToName(c, i == 0) && !looksEscaped) {
      escaped += name[i];
      continue;
    }
    char code[8];
    std::snprintf(code, sizeof code, "_x%04X_", static_cast<unsigned>(c));
    escaped += code;
  }
  return escaped;
}

std::string XmlText(std::string_view text) {
  std::string escaped;
  const std::string sound = IsUtf8(text) ? std::string(text) : ToUtf8(text, CodePage::Western);
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
          escaped += "\xEF\xBF\xBD";
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
