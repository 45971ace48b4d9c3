#pragma once

#include <QDialog>
#include <QPointer>

#include "platform/dialogs/dialogs.h"

namespace velk {

/// Runs dialogs of the program's own like its boxes: they are closed with those at the end of the program.
class ModalWindows {
 public:
  explicit ModalWindows(Dialogs& dialogs) : dialogs_(dialogs) {}

  /// Shows the window until it is answered. Gives true where it was accepted; the window may be gone otherwise, since
  /// its parent takes it along.
  bool Run(const QPointer<QDialog>& window);

 private:
  Dialogs& dialogs_;
};

}  // namespace velk
