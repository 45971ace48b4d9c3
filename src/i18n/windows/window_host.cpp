#include "i18n/windows/window_host.h"

#include <QApplication>

namespace velk {

QWidget* WindowHost::Parent() const {
  if (QWidget* topmost = QApplication::activeModalWidget()) return topmost;
  return parent_;
}

bool WindowHost::RunModal(const QPointer<QDialog>& dialog) {
  dialog->setWindowModality(Qt::WindowModal);
  bool accepted = false;
  dialogs_.Modal([&] { accepted = dialog->exec() == QDialog::Accepted; });
  return accepted && dialog;
}

QWidget* WindowHost::Find(std::type_index kind) const {
  for (const OpenWindow& open : open_)
    if (open.kind == kind && open.window) return open.window;
  return nullptr;
}

void WindowHost::BringToFront(QWidget& window) {
  if (window.isMinimized()) window.showNormal();
  window.show();
  window.raise();
  window.activateWindow();
}

void WindowHost::CloseAll() {
  while (!open_.empty()) {
    const QPointer<QWidget> last = open_.back().window;
    open_.pop_back();
    delete last;
  }
}

}  // namespace velk
