#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

#include "base/operator_text.h"

namespace velk {

/// "4 values where 18 are expected"
OperatorText ValueCountFault(int sent, int expected);

/// The last lines of an instrument that nobody knows yet: cut at CR and at LF, whatever its line end is. Keeps few of
/// them, so that it may hear for hours.
class HeardLines {
 public:
  static constexpr std::size_t kKept = 5;

  void Append(std::string_view bytes);
  /// The oldest first, with `\\x07` for a byte that can't be shown.
  const std::deque<std::string>& Shown() const { return lines_; }
  /// Delimiters in the last line, which is the count of values behind its time.
  int ValuesOfLast(std::string_view delimiter) const;
  bool HasBytes() const { return !lines_.empty() || !unfinished_.empty(); }

  /// What is told beneath the lines: the count of values, or what is wrong with it.
  OperatorText Verdict(std::string_view delimiter, int expected) const;

 private:
  void EndLine();

  std::deque<std::string> lines_;
  std::string last_;  ///< as it came
  std::string unfinished_;
};

}  // namespace velk
