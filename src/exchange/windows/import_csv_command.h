#pragma once

#include "exchange/windows/write_log.h"

namespace velk {

/// The menu command: a text file, what its first line says, its rows, and the log that they become.
void mnuFileImportCSV_Click(WindowHost& host, const ImportAccess& access);

}  // namespace velk
