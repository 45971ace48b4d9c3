#include "model/main_timers.h"

namespace velk {

MainTimers::MainTimers(Clock& clock) {
  for (auto timer : {&Timer1, &Timer2, &Timer3, &Timer4, &Timer5, &Timer6, &Timer7, &Timer8})
    *timer = clock.MakeTimer();
}

}  // namespace velk
