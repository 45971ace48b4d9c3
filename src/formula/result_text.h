#pragma once

#include <cmath>
#include <cstddef>
#include <string_view>

#include "base/numbers.h"

namespace velk {

/// The result of an operation or a function as it is written into a formula.
class ResultText {
 public:
  explicit ResultText(double value) {
    // Minus zero keeps its sign, so that "5-0*3" does not become "50".
    if (value == 0 && std::signbit(value)) *end_++ = '-';
    end_ = WriteNumberText(end_, value);
  }

  /// "E+20" to "ep20".
  void Encode() {
    char* const mark = Mark();
    if (mark == end_) return;
    *mark = 'e';
    mark[1] = mark[1] == '+' ? 'p' : 'm';
  }

  std::string_view View() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

 private:
  /// Of the exponent, which has two digits or three: "E+20", "E+308".
  char* Mark() {
    for (const std::ptrdiff_t length : {4, 5}) {
      if (end_ - text_ > length && end_[-length] == 'E') return end_ - length;
    }
    return end_;
  }

  char text_[1 + kNumberTextSize];
  char* end_ = text_;
};

}  // namespace velk
