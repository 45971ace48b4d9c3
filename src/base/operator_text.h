#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/message_text.h"

namespace velk {

/// The text to show for an English text and its number in the message database.
using Translate = std::function<std::string(std::string_view englishText, int messageNumber)>;

/// A text for the operator, put together where the language isn't known: it is brought into the language where it is
/// shown. Besides texts of the message database it holds what no language changes, such as paths, names and numbers.
class OperatorText {
 public:
  OperatorText() = default;
  // Not explicit: a text is put together as a string is.
  OperatorText(const MessageText& row);  // NOLINT(google-explicit-constructor)
  OperatorText(std::string asItIs);      // NOLINT(google-explicit-constructor)
  OperatorText(const char* asItIs);      // NOLINT(google-explicit-constructor)
  /// Words of the operating system or of a library, which are English or whatever they please. In another language
  /// `meaning` stands ahead of them, and they in brackets.
  static OperatorText Foreign(std::string words, const MessageText& meaning);

  OperatorText& operator+=(const OperatorText& more);

  bool IsEmpty() const { return parts_.empty(); }
  std::string English() const;
  std::string In(const Translate& translate) const;

 private:
  enum class Kind { AsItIs, Row, Foreign };
  struct Part {
    Kind kind;
    std::string english;
    int number = 0;
  };
  explicit OperatorText(Part part) : parts_{std::move(part)} {}

  std::vector<Part> parts_;
};

inline OperatorText operator+(OperatorText text, const OperatorText& more) {
  return text += more;
}

}  // namespace velk
