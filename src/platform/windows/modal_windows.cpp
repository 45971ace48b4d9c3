#include "platform/windows/modal_windows.h"

namespace velk {

bool ModalWindows::Run(const QPointer<QDialog>& window) {
  window->setWindowModality(Qt::WindowModal);
  standing_.push_back(window);
  bool answered = false;
  dialogs_.Modal([&] { answered = window->exec() == QDialog::Accepted; });
  std::erase_if(standing_, [&](const QPointer<QDialog>& each) { return each.isNull() || each == window; });
  return answered && window;
}

void ModalWindows::Close() {
  const auto standing = standing_;
  for (auto window = standing.rbegin(); window != standing.rend(); ++window)
    if (*window) (*window)->reject();
}

}  // namespace velk
