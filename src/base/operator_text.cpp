#include "base/operator_text.h"

#include <utility>

namespace velk {

OperatorText::OperatorText(const MessageText& row)
    : OperatorText(Part{Kind::Row, std::string(row.english), row.number}) {
}

OperatorText::OperatorText(std::string asItIs) {
  if (!asItIs.empty()) parts_.push_back({Kind::AsItIs, std::move(asItIs)});
}

OperatorText::OperatorText(const char* asItIs) : OperatorText(std::string(asItIs)) {
}

OperatorText OperatorText::Foreign(std::string words, const MessageText& meaning) {
  return OperatorText(Part{Kind::Foreign, std::move(words), meaning.number});
}

OperatorText& OperatorText::operator+=(const OperatorText& more) {
  parts_.insert(parts_.end(), more.parts_.begin(), more.parts_.end());
  return *this;
}

std::string OperatorText::English() const {
  return In([](std::string_view english, int) { return std::string(english); });
}

std::string OperatorText::In(const Translate& translate) const {
  std::string text;
  for (const Part& part : parts_) {
    const std::string shown = part.kind == Kind::AsItIs ? part.english : translate(part.english, part.number);
    text += shown;
    if (part.kind == Kind::Foreign && shown != part.english) text += " (" + part.english + ")";
  }
  return text;
}

}  // namespace velk
