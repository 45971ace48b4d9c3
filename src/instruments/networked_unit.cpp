#include "instruments/networked_unit.h"

#include "instruments/page_readers.h"
#include "instruments/protocols.h"
#include "platform/dates.h"

namespace velk {

namespace {

std::optional<std::string> FetchUnitPage(const Session& session, PageFetch& fetch) {
  try {
    return fetch.Fetch(UnitPageAddress(session));
  } catch (const PageError& error) {
    throw RuntimeError(error.Number(), PageErrorText(session.Translator, error));
  }
}

MessageId TextOf(PageFault fault) {
  switch (fault) {
    case PageFault::BadAddress:
      return MessageId::PageBadAddress;
    case PageFault::NoConnection:
      return MessageId::PageNoConnection;
    case PageFault::TimedOut:
      return MessageId::PageTimedOut;
    case PageFault::TooLarge:
      return MessageId::PageTooLarge;
    case PageFault::RedirectRefused:
      return MessageId::PageRedirectRefused;
    case PageFault::Refused:
      return MessageId::PageRefused;
  }
  return MessageId::PageNoConnection;
}

}  // namespace

std::string UnitPageAddress(const Session& session) {
  return session.daqIPAddress + "/" + session.daqHTML;
}

std::string PageErrorText(const clstranslation& translator, const PageError& error) {
  const std::string text = error.Address() + translator.Translate(TextOf(error.Fault()));
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
  const auto read = session.SerialData == protocol::LumoThroughHmi ? LineFromPanelPage : LineFromNamedCells;
  return read(*page, time, session.NumberOfParameters) + session.Terminator;
}

}  // namespace velk
