#pragma once

#include <QDialog>
#include <QPointer>
#include <vector>

#include "platform/dialogs.h"

namespace velk {

/// Runs dialogs of the program's own like its boxes, and remembers which stand, for the end of the program.
class ModalWindows {
 public:
  explicit ModalWindows(Dialogs& dialogs) : dialogs_(dialogs) {}

  /// Shows the window until it is answered. Gives true where it was accepted; the window may be gone otherwise, since
  /// its parent takes it along.
  bool Run(const QPointer<QDialog>& window);

  /// Closes what stands on the screen without an answer.
  void Close();

 private:
  Dialogs& dialogs_;
  std::vector<QPointer<QDialog>> standing_;
};

}  // namespace velk
