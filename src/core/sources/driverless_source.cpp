#include "core/sources/driverless_source.h"

#include "core/texts.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

void DriverlessSource::Check() {
  platform_.dialogs.Message({text::NoDriver, text::AcquireDataTitle, Buttons::Ok, BoxIcon::Exclamation});
}

}  // namespace velk
