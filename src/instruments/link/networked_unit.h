#pragma once

#include <optional>
#include <string>

#include "model/session.h"
#include "platform/pages/page_fetch.h"

namespace velk {

/// Where the unit's page stands: daqIPAddress, "/" and daqHTML.
std::string UnitPageAddress(const Session& session);

/// What the operator is told when a page did not come; names the address.
OperatorText PageErrorText(const PageError& error);

/// Fetches the unit's page and gives its line, terminator included, for Timer4: the page that is one table, which
/// brings its own time. Nothing while another page is being fetched. Raises RuntimeError with the text for the operator
/// where no page came, and what the readers of pages raise.
std::optional<std::string> ReadTablePage(const Session& session, PageFetch& fetch);

/// The same for Timer5: the page of named cells, or the operator panel's for "ORBEN LUMO through HMI". The line begins
/// with the present time.
std::optional<std::string> ReadValuesPage(const Session& session, PageFetch& fetch, const Clock& clock);

}  // namespace velk
