#include "wells/survey_file.h"

#include <algorithm>
#include <cmath>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "platform/files/whole_file.h"
#include "wells/texts.h"

namespace velk {

namespace {

constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kBetween = " \t\r\n";
/// Older programs end a text with this character; whatever follows is no part of it.
constexpr char kEndOfText = 26;
/// Far beyond the rows that can be counted.
constexpr std::size_t kLargestFile = 16 << 20;

/// The items of a text one after the other: they stand apart by a comma, by blanks or by line ends.
class Items {
 public:
  explicit Items(std::string_view text) : rest_(text.substr(0, text.find(kEndOfText))) {}

  std::string_view Line() {
    const std::size_t end = std::min(rest_.find_first_of(kLineEnds), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end);
    return line;
  }
  bool AtEnd() {
    Skip(kBetween);
    return rest_.empty();
  }
  /// The next number, 0 for an item that is none; nothing at the end. Raises Overflow beyond the 64-bit range.
  std::optional<double> Next() {
    if (AtEnd()) return std::nullopt;
    const std::size_t end = std::min(rest_.find_first_of(" \t\r\n,"), rest_.size());
    const double number = Val(rest_.substr(0, end));
    rest_.remove_prefix(end);
    Skip(kBlanks);
    if (rest_.starts_with(',')) rest_.remove_prefix(1);
    if (!std::isfinite(number)) throw RuntimeError(ErrorNumber::Overflow);
    return number;
  }

 private:
  void Skip(std::string_view characters) {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(characters), rest_.size()));
  }

  std::string_view rest_;
};

/// The sections of a well, row by row.
class Sections {
 public:
  void Add(double depth, double firstSize, double secondSize) {
    if (!last_ || last_->firstSize != firstSize || last_->secondSize != secondSize) {
      End(depth);
      last_ = {depth, depth, firstSize, secondSize};
    }
    last_->end = depth;
  }
  /// The section that is begun ends at this depth.
  void End(double depth) {
    if (!last_) return;
    last_->end = depth;
    if (sections_.size() < kMostSections)
      sections_.push_back(*last_);
    else
      isTooLong_ = true;
  }
  std::vector<WellSection> Take() {
    if (last_) End(last_->end);
    last_.reset();
    return std::move(sections_);
  }
  bool IsTooLong() const { return isTooLong_; }

 private:
  std::vector<WellSection> sections_;
  std::optional<WellSection> last_;
  bool isTooLong_ = false;
};

void Tell(SurveyFile& file, const OperatorText& fault) {
  if (!file.fault.IsEmpty()) file.fault += "\n";
  file.fault += fault;
}

void TellRows(SurveyFile& file, const OperatorText& fault, int announced) {
  Tell(file, fault + " " + text::SurveyRowsAnnounced + std::to_string(announced) + text::SurveyRowsRead +
                 std::to_string(file.rows.size()) + ".");
}

/// Reads the announced rows of `columns` numbers each; whether all of them were there.
bool ReadRows(Items& items, SurveyFile& file, int announced, std::size_t columns, std::size_t capacity) {
  Sections sections;
  OperatorText fault;
  try {
    while (fault.IsEmpty() && static_cast<int>(file.rows.size()) < announced) {
      if (file.rows.size() == capacity) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
      double row[5] = {};
      for (std::size_t column = 0; column < columns && fault.IsEmpty(); ++column) {
        const std::optional<double> number = items.Next();
        if (!number) fault = text::SurveyFileShort;
        row[column] = number.value_or(0);
      }
      if (!fault.IsEmpty()) break;
      file.rows.push_back({row[0], row[1], row[2]});
      if (columns == 5) sections.Add(row[0], row[3], row[4]);
    }
  } catch (const RuntimeError& error) {
    fault = error.Text() + OperatorText(".");
  }
  file.sections = sections.Take();
  if (!fault.IsEmpty()) TellRows(file, fault, announced);
  if (sections.IsTooLong()) Tell(file, text::WellSectionsLeftOut);
  return fault.IsEmpty();
}

void ReadUnits(Items& items, SurveyFile& file) {
  if (items.AtEnd()) return;
  const double code = items.Next().value_or(-1);
  if (code == 0 || code == 1 || code == 2)
    file.units = static_cast<std::int16_t>(code);
  else
    Tell(file, text::SurveyUnitUnknown);
}

SurveyFile ReadText(Items items, double announced, std::size_t columns, std::size_t capacity) {
  SurveyFile file;
  try {
    const int rows = ToInt16(announced);
    if (rows < 1)
      Tell(file, text::SurveyFileEmpty);
    else if (ReadRows(items, file, rows, columns, capacity))
      ReadUnits(items, file);
  } catch (const RuntimeError& error) {
    Tell(file, error.Text());
  }
  return file;
}

std::string Printed(double number) {
  return (number < 0 ? "" : " ") + NumberText(number) + " ";
}

std::string PrintedAngle(double degrees) {
  return degrees == 0 ? "0" : Printed(degrees);
}

}  // namespace

SurveyFile ReadSurveyText(std::string_view bytes) {
  Items items(bytes);
  const double announced = Val(items.Line());
  return ReadText(items, announced, 3, std::numeric_limits<std::size_t>::max());
}

SurveyFile ReadWellText(std::string_view bytes, std::size_t capacity) {
  Items items(bytes);
  double announced = 0;
  try {
    announced = items.Next().value_or(0);
  } catch (const RuntimeError&) {
    announced = HUGE_VAL;
  }
  return ReadText(items, announced, 5, capacity);
}

std::string SurveyText(std::span<const SurveyStation> rows, std::int16_t units) {
  std::string text = Printed(static_cast<double>(rows.size())) + "\r\n";
  for (const SurveyStation& row : rows)
    text += Printed(row.depth) + "," + PrintedAngle(row.inclination) + "," + PrintedAngle(row.azimuth) + "\r\n";
  return text + Printed(units) + "\r\n";
}

bool IsWellFile(std::string_view path) {
  return UpperCase(Right(path, 3)) == "DT5";
}

SurveyFile ReadSurveyFile(const std::string& path, std::size_t wellCapacity) {
  const std::string bytes = ReadWholeFile(path, kLargestFile);
  return IsWellFile(path) ? ReadWellText(bytes, wellCapacity) : ReadSurveyText(bytes);
}

}  // namespace velk
