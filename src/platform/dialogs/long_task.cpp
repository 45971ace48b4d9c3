#include "platform/dialogs/long_task.h"

#include <algorithm>

namespace velk {

namespace {

constexpr std::int64_t kYieldEveryMs = 5;
constexpr std::int64_t kAppearAfterMs = 300;
constexpr std::int64_t kShowEveryMs = 100;  ///< no eye follows faster

}  // namespace

LongTask::LongTask(Dialogs& dialogs, Clock& clock, const OperatorText& title)
    : clock_(clock), box_(dialogs, title), began_(clock.Ticks()), yielded_(began_) {
}

LongTask::LongTask(Dialogs& dialogs, Clock& clock, std::unique_ptr<ProgressBox> shown)
    : clock_(clock), box_(dialogs, std::move(shown)), began_(clock.Ticks()), yielded_(began_) {
}

void LongTask::Step(double done, double of) {
  const std::int64_t now = clock_.Ticks();
  if (now - yielded_ < kYieldEveryMs) return;
  if (!appeared_ && now - began_ >= kAppearAfterMs) {
    box_.Appear();
    appeared_ = true;
  }
  if (appeared_ && now - shown_ >= kShowEveryMs) {
    box_.Show(doing_, of > 0 ? std::clamp(done / of, 0.0, 1.0) : -1.0);
    shown_ = now;
  }
  clock_.Yield();
  // What ran meanwhile, a box perhaps, is no time of this task's.
  yielded_ = clock_.Ticks();
  if (box_.IsCancelled()) throw TaskCancelled{};
}

}  // namespace velk
