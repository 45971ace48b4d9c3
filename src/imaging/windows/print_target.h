#pragma once

#include <optional>
#include <string>
#include <vector>

#include "i18n/windows/window_host.h"
#include "imaging/printer_choice.h"

namespace velk {

/// Asks where to save to, beginning in `folder`, which becomes that of the answer. A name that ends with none of
/// `endings` (".jpg"), in any case, gets the first one. A file that is there is not replaced unasked. Nothing where the
/// operator leaves it.
std::optional<std::string> AskForFile(Dialogs& dialogs, std::string& folder, const MessageText& title,
                                      const MessageText& filter, const std::vector<std::string>& endings);

/// Asks for the printer, and for the file where it prints to one: what PrinterChoice::MakePrinter takes. Nothing where
/// the operator leaves it.
std::optional<std::string> AskForPrinter(WindowHost& host, PrinterChoice& choice, std::string& folder);

}  // namespace velk
