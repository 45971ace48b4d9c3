#pragma once

#include <string>
#include <string_view>

#include "model/session.h"
#include "platform/pages/page_fetch.h"

namespace velk {

/// Where the unit's page stands: daqIPAddress, "/" and daqHTML.
std::string UnitPageAddress(const Session& session);

/// What the operator is told when a page did not come; names the address.
OperatorText PageErrorText(const PageError& error);

/// The text of a page that has come. Raises RuntimeError with the text for the operator where none has.
const std::string& TextOfPage(const FetchedPage& page);

/// The line of the page that is one table, terminator included, for Timer4. It brings its own time. Raises what the
/// readers of pages raise.
std::string LineOfTablePage(const Session& session, std::string_view page);

/// The same for Timer5: the page of named cells, or the operator panel's for "ORBEN LUMO through HMI". The line begins
/// with the time of `now`.
std::string LineOfValuesPage(const Session& session, std::string_view page, double now);

}  // namespace velk
