#include "instruments/link/link_lease.h"

namespace velk {

LinkLease::LinkLease(Link& link, MainTimers& timers) : link_(link), before_(link.Release()) {
  for (const auto& timer : {&timers.Timer1, &timers.Timer4, &timers.Timer5, &timers.Timer7, &timers.Timer8}) {
    if (!(*timer)->Enabled()) continue;
    (*timer)->SetEnabled(false);
    running_.push_back(timer->get());
  }
}

LinkLease::~LinkLease() {
  if (anew_) {
    link_.Release();
    link_.SetODataCom();
    return;
  }
  link_.Restore(before_);
  for (Timer* const timer : running_) timer->SetEnabled(true);
}

}  // namespace velk
