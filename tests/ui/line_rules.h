#pragma once

#include <optional>
#include <vector>

#include "ui/sent_lines.h"

namespace velk::test {

/// How an instrument's lines are written.
struct LineForm {
  int channels = 3;
  std::string delimiter = " ";
  std::string terminator = "\r\n";
};

/// What a line that passes gives to the log.
struct Sample {
  std::vector<double> fields;           ///< as sent, one a channel, not scaled yet
  std::optional<std::string> dateTime;  ///< "dd-mmm-yyyy hh:mm:ss" where the line brings its own
};

/// Whether a protocol lets a line pass, and what it holds then. `before` is the line ahead of it; null for the first
/// one of a job.
using LineRule = std::optional<Sample> (*)(const SentLine& line, const SentLine* before, const LineForm& form);

/// The right count of delimiters, an hour and a minute of the day, as long as the line before, and values of decimal
/// text.
std::optional<Sample> AsLongAsTheLineBefore(const SentLine& line, const SentLine* before, const LineForm& form);
/// The same check of a page, whose time the program sets itself.
std::optional<Sample> PageAsLongAsTheOneBefore(const SentLine& line, const SentLine* before, const LineForm& form);
/// The right count and time; where the delimiter is the blank, "hh:mm:ss" and ten characters a channel too.
std::optional<Sample> FormattedLine(const SentLine& line, const SentLine* before, const LineForm& form);
/// The right count and time.
std::optional<Sample> CountAndTime(const SentLine& line, const SentLine* before, const LineForm& form);
/// Any line with nine characters ahead of its terminator and a field a channel.
std::optional<Sample> AnyLine(const SentLine& line, const SentLine* before, const LineForm& form);
/// No line.
std::optional<Sample> NoLine(const SentLine& line, const SentLine* before, const LineForm& form);
/// A heading of 17 characters and 5 that lead the time, then a line a channel: a name of one digit, a blank, a value.
std::optional<Sample> DataTakerBlock(const SentLine& line, const SentLine* before, const LineForm& form);
/// A full date and time, and at least as many values as channels.
std::optional<Sample> OwnDateAndTime(const SentLine& line, const SentLine* before, const LineForm& form);
/// Any line of answers.
std::optional<Sample> Answers(const SentLine& line, const SentLine* before, const LineForm& form);

/// The number at the front of a text, 0 where there is none.
double NumberAtFront(const std::string& text);

}  // namespace velk::test
