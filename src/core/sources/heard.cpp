#include "core/sources/heard.h"

#include "base/numbers.h"
#include "core/texts.h"

namespace velk {

namespace {

OperatorText HeardText(const Session& session, const Heard& heard) {
  if (heard.bytes == 0) return text::HeardNothing;
  OperatorText shown = text::HeardBytes + Format(static_cast<double>(heard.bytes), "#,##0");
  shown += heard.lineEnd ? text::HeardOneLineEnd : text::HeardNoLineEnd;
  if (session.Data.rejected > 0) shown += "\n" + (text::HeardRejected + session.Data.lastReason);
  return shown;
}

}  // namespace

OperatorText TimeOutText(const MessageText& text, const Session& session, const Link& link, const Heard& heard) {
  return text + "\n\n" + link.PortInUse() + "\n" + HeardText(session, heard);
}

}  // namespace velk
