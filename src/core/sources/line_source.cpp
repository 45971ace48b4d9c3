#include "core/sources/line_source.h"

#include "core/sources/port_check.h"
#include "core/texts.h"
#include "instruments/reading/heard.h"
#include "instruments/reading/line_length.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"

namespace velk {

LineSource::LineSource(Session& session, const Platform& platform, Link& link, SampleRoad& road, PortTicks& ticks)
    : session_(session), platform_(platform), link_(link), ticks_(ticks) {
  link_.onLine = [&road](const std::string& line) { road.ProcessLine(line); };
}

bool LineSource::LearnsLength() const {
  return ProtocolOf(session_).learnsLineLength;
}

void LineSource::Check() {
  CheckPort(session_, platform_, link_);
}

bool LineSource::Open() {
  return !LearnsLength() || ticks_.OpenPort();
}

void LineSource::Start() {
  link_.WatchClosely();
  if (LearnsLength()) ticks_.Start();
}

void LineSource::End() {
  ticks_.Stop();
  link_.ClosePlainPort();
}

void LineSource::Timer1_Timer() {
  ticks_.Tick([this](const Statements& run, PortTurn& port) { return Learn(run, port); });
}

Values LineSource::Learn(const Statements& run, PortTurn& port) {
  PortReader reader(port, platform_.clock, session_);
  const TimeLimit limit(platform_.clock, session_);
  const LineLength outcome = run([&] { return LearnLineLength(reader, session_, limit); });
  if (outcome == LineLength::Learned) {
    ticks_.Stop();
    link_.ClosePlainPort();
    link_.SetODataCom();
  }
  if (outcome != LineLength::TimedOutCheckHardware && outcome != LineLength::TimedOutCheckSettings) return Values::Left;
  const bool lineEnd = outcome == LineLength::TimedOutCheckSettings;
  const MessageText text = lineEnd ? text::TimeOutCheckSettings : text::TimeOutCheckHardware;
  platform_.dialogs.Message({TimeOutText(text, link_.PortInUse(), session_, {reader.BytesRead(), lineEnd}),
                             text::TimeOutTitle, Buttons::Ok, BoxIcon::Critical});
  return Values::Left;
}

}  // namespace velk
