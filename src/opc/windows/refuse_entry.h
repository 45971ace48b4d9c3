#pragma once

#include <QLineEdit>

#include "i18n/windows/window_host.h"

namespace velk {

/// Tells what is wrong with a field; what was typed stays, selected.
void RefuseEntry(WindowHost& host, QLineEdit& field, const OperatorText& why);

}  // namespace velk
