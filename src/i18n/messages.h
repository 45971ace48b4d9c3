#pragma once

#include <span>
#include <string_view>

namespace velk {

/// Every message and word that the program composes itself. The value is the number in the message database.
enum class MessageId : int {
#define VELK_MESSAGE(constant, number, english) constant = number,
#include "i18n/messages.inc"
#undef VELK_MESSAGE
};

struct MessageRow {
  MessageId id;
  std::string_view constant;
  std::string_view english;
};

/// The whole table, in the order of messages.inc.
std::span<const MessageRow> Messages();

/// The English text of a message.
std::string_view EnglishText(MessageId id);

}  // namespace velk
