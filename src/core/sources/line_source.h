#pragma once

#include "core/sources/port_ticks.h"
#include "core/sources/sample_source.h"

namespace velk {

/// Lines of the line driver, as they come. Where the lines of an instrument are told by their length, the first tick of
/// a job learns it on the plain port; then the driver takes the device over.
class LineSource : public SampleSource {
 public:
  LineSource(Session& session, const Platform& platform, Link& link, SampleRoad& road, PortTicks& ticks);

  void Check() override;
  bool Open() override;
  void Start() override;
  void Pause() override { ticks_.Stop(); }
  void End() override;
  void Timer1_Timer() override;

 private:
  bool LearnsLength() const;
  Values Learn(const Statements& run, PortTurn& port);

  Session& session_;
  Platform platform_;
  Link& link_;
  PortTicks& ticks_;
};

}  // namespace velk
