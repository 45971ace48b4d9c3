#include "instruments/link/link_lease.h"

#include <utility>

namespace velk {

TimersAtRest::TimersAtRest(MainTimers& timers) {
  for (const auto& timer : {&timers.Timer1, &timers.Timer4, &timers.Timer5, &timers.Timer7, &timers.Timer8}) {
    if (!(*timer)->Enabled()) continue;
    (*timer)->SetEnabled(false);
    running_.push_back(timer->get());
  }
}

TimersAtRest::~TimersAtRest() {
  for (Timer* const timer : running_) timer->SetEnabled(true);
}

LinkLease::LinkLease(Link& link, MainTimers& timers)
    : link_(link),
      timers_(timers),
      before_(link.Release()),
      onReadyRead_(std::exchange(link.MSComm1->onReadyRead, nullptr)) {
}

LinkLease::~LinkLease() {
  link_.MSComm1->onReadyRead = onReadyRead_;
  if (anew_) {
    link_.Release();
    link_.ForgetDevice();
    link_.SetODataCom();
  } else {
    link_.Restore(before_);
  }
}

}  // namespace velk
