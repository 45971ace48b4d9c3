#include "i18n/messages.h"

#include <stdexcept>

namespace velk {

namespace {

constexpr MessageRow kMessages[] = {
#define VELK_MESSAGE(constant, number, english) {MessageId::constant, #constant, english},
#include "i18n/messages.inc"
#undef VELK_MESSAGE
};

}  // namespace

std::span<const MessageRow> Messages() {
  return kMessages;
}

std::string_view EnglishText(MessageId id) {
  // A switch, not a search: status words are compared with every line. It also makes two equal numbers a compile error.
  switch (id) {
#define VELK_MESSAGE(constant, number, english) \
  case MessageId::constant:                     \
    return english;
#include "i18n/messages.inc"
#undef VELK_MESSAGE
  }
  throw std::logic_error("a message outside the table");
}

}  // namespace velk
