#pragma once

#include <string_view>

namespace velk {

/// A text of the program as a folder's texts.h lists it: its number in the message database and the English.
struct MessageText {
  int number = 0;
  std::string_view english = {};

  /// The same row of the message database.
  friend constexpr bool operator==(const MessageText& a, const MessageText& b) { return a.number == b.number; }
};

}  // namespace velk
