#include "ui/line_rules.h"

#include <algorithm>
#include <regex>

namespace velk::test {

namespace {

auto Delimiters(const std::string& text, const LineForm& form) {
  return std::count(text.begin(), text.end(), form.delimiter[0]);
}

bool HasCount(const std::string& text, const LineForm& form) {
  return Delimiters(text, form) == form.channels;
}

bool HasHourAndMinute(const std::string& text) {
  const auto below = [&](std::size_t at, double limit) {
    const double value = NumberAtFront(text.substr(at, 2));
    return value >= 0 && value < limit;
  };
  return text.size() >= 6 && text[2] == ':' && text[5] == ':' && below(0, 24) && below(3, 60);
}

/// The fields behind the first one. Those behind the last channel's are left out.
std::vector<double> FieldsOf(const std::string& text, const LineForm& form) {
  std::vector<std::string> fields;
  std::string field;
  for (const char c : text) {
    if (c == form.delimiter[0]) {
      fields.push_back(field);
      field.clear();
    } else {
      field += c;
    }
  }
  fields.push_back(field);
  std::vector<double> values;
  for (std::size_t i = 1; i <= static_cast<std::size_t>(form.channels); ++i)
    values.push_back(NumberAtFront(fields.at(i)));
  return values;
}

}  // namespace

double NumberAtFront(const std::string& text) {
  static const std::regex number("^[ \t]*([+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eEdD][+-]?[0-9]+)?)");
  std::smatch found;
  if (!std::regex_search(text, found, number)) return 0;
  return std::stod(std::regex_replace(found[1].str(), std::regex("[dD]"), "e"));
}

std::optional<Sample> AsLongAsTheLineBefore(const SentLine& line, const SentLine* before, const LineForm& form) {
  static const std::regex decimal("[^ ]*( [+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+))*\r\n");
  if (before == nullptr || before->text.size() != line.text.size()) return {};
  if (!std::regex_match(line.text, decimal)) return {};
  return CountAndTime(line, before, form);
}

std::optional<Sample> PageAsLongAsTheOneBefore(const SentLine& line, const SentLine* before, const LineForm& form) {
  if (before == nullptr || before->text.size() != line.text.size() || !HasCount(line.text, form)) return {};
  return Sample{FieldsOf(line.text, form), {}};
}

std::optional<Sample> FormattedLine(const SentLine& line, const SentLine* before, const LineForm& form) {
  const std::size_t length = 8 + 10 * static_cast<std::size_t>(form.channels) + form.terminator.size();
  if (form.delimiter == " " && line.text.size() != length) return {};
  return CountAndTime(line, before, form);
}

std::optional<Sample> CountAndTime(const SentLine& line, const SentLine*, const LineForm& form) {
  if (!HasCount(line.text, form) || !HasHourAndMinute(line.text)) return {};
  return Sample{FieldsOf(line.text, form), {}};
}

std::optional<Sample> AnyLine(const SentLine& line, const SentLine*, const LineForm& form) {
  std::string text = line.text;
  std::erase(text, '\0');
  if (text.size() < 9 + form.terminator.size() || Delimiters(text, form) < form.channels) return {};
  return Sample{FieldsOf(text, form), {}};
}

std::optional<Sample> NoLine(const SentLine&, const SentLine*, const LineForm&) {
  return {};
}

std::optional<Sample> DataTakerBlock(const SentLine& line, const SentLine*, const LineForm& form) {
  if (line.text.size() < 32 || !HasHourAndMinute(line.text.substr(22))) return {};
  Sample sample;
  std::string rest = line.text.substr(32);
  while (rest.size() >= 5) {
    const std::size_t blank = rest.find(' ');
    sample.fields.push_back(blank == std::string::npos ? 0 : NumberAtFront(rest.substr(blank)));
    const std::size_t end = rest.find("\r\n");
    // The next line is read from its second character on: the first one is its channel's name.
    rest = end == std::string::npos || end + 3 > rest.size() ? "" : rest.substr(end + 3);
  }
  if (sample.fields.size() != static_cast<std::size_t>(form.channels)) return {};
  return sample;
}

std::optional<Sample> OwnDateAndTime(const SentLine& line, const SentLine*, const LineForm& form) {
  static const std::regex dateTime("^[0-9]{1,2}-[A-Z][a-z]{2}-[0-9]{4} [0-2][0-9]:[0-5][0-9]:[0-5][0-9]$");
  const std::string first = line.text.substr(0, line.text.find(form.delimiter));
  if (Delimiters(line.text, form) < form.channels || !std::regex_match(first, dateTime)) return {};
  return Sample{FieldsOf(line.text, form), first};
}

std::optional<Sample> Answers(const SentLine& line, const SentLine*, const LineForm& form) {
  return Sample{FieldsOf(line.text, form), {}};
}

}  // namespace velk::test
