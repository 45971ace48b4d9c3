#pragma once

#include "core/sources/port_ticks.h"
#include "core/sources/sample_source.h"

namespace velk {

/// The plain port, from which a decoder reads one sample at each tick of Timer1.
class TickedSource : public SampleSource {
 public:
  TickedSource(Session& session, const Platform& platform, Link& link, SampleRoad& road, PortTicks& ticks)
      : session_(session), platform_(platform), link_(link), road_(road), ticks_(ticks) {}

  void Check() override;
  bool Open() override { return ticks_.OpenPort(); }
  void Start() override { ticks_.Start(); }
  void Pause() override { ticks_.Stop(); }
  void End() override;
  void Timer1_Timer() override;
  void MSComm1_OnComm() override;

 private:
  Values Poll(const Statements& run, PortTurn& port);
  std::string ReadLine(PortTurn& port);

  Session& session_;
  Platform platform_;
  Link& link_;
  SampleRoad& road_;
  PortTicks& ticks_;
};

}  // namespace velk
