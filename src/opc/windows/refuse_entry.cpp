#include "opc/windows/refuse_entry.h"

namespace velk {

void RefuseEntry(WindowHost& host, QLineEdit& field, const OperatorText& why) {
  const QPointer<QLineEdit> alive(&field);
  host.Boxes().Message({why, {}, Buttons::Ok, BoxIcon::Exclamation});
  if (!alive) return;
  field.setFocus();
  field.selectAll();
}

}  // namespace velk
