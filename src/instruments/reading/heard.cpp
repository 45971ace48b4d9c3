#include "instruments/reading/heard.h"

#include "base/numbers.h"
#include "instruments/texts.h"

namespace velk {

namespace {

MessageText WhatIsMissing(const Heard& heard) {
  if (heard.rejected) return text::HeardNoSoundLine;
  return heard.lineEnd ? text::HeardOneLineEnd : text::HeardNoLineEnd;
}

OperatorText HeardText(const Session& session, const Heard& heard) {
  if (heard.bytes == 0) return text::HeardNothing;
  OperatorText shown = text::HeardBytes + Format(static_cast<double>(heard.bytes), "#,##0");
  shown += WhatIsMissing(heard);
  if (session.Data.rejected > 0) shown += "\n" + (text::HeardRejected + session.Data.lastReason);
  return shown;
}

}  // namespace

OperatorText TimeOutText(const MessageText& text, const OperatorText& port, const Session& session,
                         const Heard& heard) {
  return text + "\n\n" + port + "\n" + HeardText(session, heard);
}

}  // namespace velk
