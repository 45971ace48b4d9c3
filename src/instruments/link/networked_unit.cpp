#include "instruments/link/networked_unit.h"

#include "base/dates.h"
#include "instruments/decoders/page_readers.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"

namespace velk {

namespace {

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

const std::string& TextOfPage(const FetchedPage& page) {
  if (page.error) throw RuntimeError(page.error->Number(), PageErrorText(*page.error));
  return page.text;
}

std::string LineOfTablePage(const Session& session, std::string_view page) {
  return LineFromTable(page, session.Delimiter) + session.Terminator;
}

std::string LineOfValuesPage(const Session& session, std::string_view page, double now) {
  const std::string time = FormatDate(now, "hh:mm:ss");
  return ProtocolOf(session).valuesPage(page, time, session.NumberOfParameters) + session.Terminator;
}

}  // namespace velk
