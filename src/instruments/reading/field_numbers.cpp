#include "instruments/reading/field_numbers.h"

#include "base/numbers.h"
#include "base/plain_decimal.h"
#include "instruments/reading/get_field.h"

namespace velk {

namespace {

/// Whether a text can end a number that stands ahead of it: no number goes on with its first character.
bool EndsNumbers(std::string_view text) {
  return !text.empty() && std::string_view("0123456789.+-eE").find(text[0]) == std::string_view::npos;
}

/// Takes the fields of a line one after the other, from behind its time.
class FieldWalk {
 public:
  FieldWalk(std::string_view line, std::string_view delimiter, std::string_view terminator)
      : line_(line),
        delimiter_(delimiter),
        terminator_(terminator),
        // Behind a longer delimiter the rest of it belongs to the field.
        separatorsEndNumbers_(delimiter.size() == 1 && EndsNumbers(delimiter) && EndsNumbers(terminator)) {
    GetField(line_, delimiter_, position_);
  }

  bool HasMore() const { return position_ != 0; }
  bool AreAllPlain() const { return areAllPlain_; }

  double Next() {
    const PlainDecimal plain = ReadPlainDecimal(line_.substr(position_));
    const std::size_t end = position_ + plain.length;
    const bool isPlain = plain.length > 0 && separatorsEndNumbers_;
    if (isPlain && end < line_.size() && line_[end] == delimiter_[0]) {
      position_ = end + 1;
      return plain.value;
    }
    const bool isLast = isPlain && line_.substr(end).starts_with(terminator_);
    if (!isLast) areAllPlain_ = false;
    return Val(GetField(line_, delimiter_, position_));
  }

 private:
  const std::string_view line_, delimiter_, terminator_;
  const bool separatorsEndNumbers_;
  std::size_t position_ = 0;
  bool areAllPlain_ = true;
};

}  // namespace

FieldNumbers ReadFieldNumbers(std::string_view line, std::string_view delimiter, std::string_view terminator,
                              std::span<double> numbers) {
  FieldWalk fields(line, delimiter, terminator);
  FieldNumbers read;
  for (; read.count < numbers.size() && fields.HasMore(); ++read.count) numbers[read.count] = fields.Next();
  read.areSound = fields.AreAllPlain() && !fields.HasMore();
  return read;
}

}  // namespace velk
