#include "platform/windows/modal_windows.h"

namespace velk {

bool ModalWindows::Run(const QPointer<QDialog>& window) {
  window->setWindowModality(Qt::WindowModal);
  bool answered = false;
  dialogs_.Modal([&] { answered = window->exec() == QDialog::Accepted; });
  return answered && window;
}

}  // namespace velk
