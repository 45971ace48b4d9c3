#pragma once

#include <optional>

#include "core/sample_road.h"
#include "core/sources/sample_source.h"
#include "instruments/decoders/intermittent.h"
#include "instruments/link/link.h"
#include "model/main_timers.h"

namespace velk {

/// Lines that an instrument has buffered and sends in bursts, each with a date and time of its own. The first one of a
/// job begins the time axis at its minute, and so does one that is earlier than the line before. Timer1 looks
/// whether its port is still there.
class BufferedSource : public SampleSource {
 public:
  BufferedSource(Session& session, const Platform& platform, MainTimers& timers, Link& link, SampleRoad& road);

  void Check() override;
  bool Open() override;
  void Start() override { timer_.SetEnabled(true); }
  void Pause() override { timer_.SetEnabled(false); }
  void End() override;
  void Timer1_Timer() override;
  void MSComm1_OnComm() override;
  bool IsRunning() const override { return analysing_; }

 private:
  void IntermittentDataAnalysis();
  Values Take(const Statements& run, int number);

  Session& session_;
  Platform platform_;
  Timer& timer_;
  Link& link_;
  SampleRoad& road_;
  const Report report_;
  IntermittentLines lines_;
  std::optional<double> lastTime_;  ///< of the last accepted line of this job
  bool analysing_ = false;
};

}  // namespace velk
