#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/loop/clock.h"
#include "platform/loop/gate.h"

namespace velk {

/// The machine's clock and Qt's event loop. Lives on the thread of the QCoreApplication, which must stand.
class SystemClock : public Clock {
 public:
  explicit SystemClock(Gate& gate);

  double Now() const override;
  std::int64_t Ticks() const override;
  void Yield() override;
  void WaitRound() override;
  /// Returns early once the program is ending.
  void WaitMilliseconds(int milliseconds) override;
  void Post(std::function<void()> task) override;
  std::unique_ptr<Timer> MakeTimer() override;
  std::unique_ptr<Timer> MakeQuickTimer() override;

  /// From the end of the program on, waits no longer rest: a wait under way ends with its present round.
  void SetEnding() { ending_ = true; }

  /// A local time as date-time in days; a whole second gives the bits of DateSerial + TimeOfDay.
  static double ToDays(const QDateTime& local);

 private:
  Gate& gate_;
  QObject context_;  ///< posted tasks end with it
  QElapsedTimer running_;
  mutable std::int64_t offsetMinute_ = -1;  ///< minutes since 1970 UTC in which the offset was asked for
  mutable int offsetSeconds_ = 0;           ///< of local time
  bool ending_ = false;
};

}  // namespace velk
