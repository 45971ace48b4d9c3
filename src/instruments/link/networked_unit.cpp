#include "instruments/link/networked_unit.h"

#include "base/dates.h"
#include "instruments/decoders/page_readers.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"

namespace velk {

namespace {

std::optional<std::string> FetchUnitPage(const Session& session, PageFetch& fetch) {
  try {
    return fetch.Fetch(UnitPageAddress(session));
  } catch (const PageError& error) {
    throw RuntimeError(error.Number(), PageErrorText(error));
  }
}

const MessageText& TextOf(PageFault fault) {
  switch (fault) {
    case PageFault::BadAddress:
      return text::PageBadAddress;
    case PageFault::NoConnection:
      return text::PageNoConnection;
    case PageFault::TimedOut:
      return text::PageTimedOut;
    case PageFault::TooLarge:
      return text::PageTooLarge;
    case PageFault::RedirectRefused:
      return text::PageRedirectRefused;
    case PageFault::Refused:
      return text::PageRefused;
  }
  return text::PageNoConnection;
}

}  // namespace

std::string UnitPageAddress(const Session& session) {
  return session.daqIPAddress + "/" + session.daqHTML;
}

OperatorText PageErrorText(const PageError& error) {
  const OperatorText text = error.Address() + TextOf(error.Fault());
  return error.Fault() == PageFault::Refused ? text + std::to_string(error.Status()) : text;
}

std::optional<std::string> ReadTablePage(const Session& session, PageFetch& fetch) {
  const std::optional<std::string> page = FetchUnitPage(session, fetch);
  if (!page) return {};
  return LineFromTable(*page, session.Delimiter) + session.Terminator;
}

std::optional<std::string> ReadValuesPage(const Session& session, PageFetch& fetch, const Clock& clock) {
  const std::optional<std::string> page = FetchUnitPage(session, fetch);
  if (!page) return {};
  const std::string time = FormatDate(clock.Now(), "hh:mm:ss");
  return ProtocolOf(session).valuesPage(*page, time, session.NumberOfParameters) + session.Terminator;
}

}  // namespace velk
