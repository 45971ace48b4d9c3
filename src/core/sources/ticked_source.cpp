#include "core/sources/ticked_source.h"

#include "core/sources/port_check.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

void TickedSource::Check() {
  CheckPort(session_, platform_, link_);
}

void TickedSource::End() {
  ticks_.Stop();
  link_.ClosePlainPort();
}

void TickedSource::Timer1_Timer() {
  ticks_.Tick([this](const Statements& run, PortTurn& port) { return Poll(run, port); });
}

Values TickedSource::Poll(const Statements& run, PortTurn& port) {
  const std::string line = ReadLine(port);
  // Silence is no sample, and one that a later sample has overtaken would be drawn backwards.
  if (session_.StopRequested || line.empty() || !port.IsHeld()) return Values::Left;
  link_.PlainDataCame();
  session_.SampleTime = platform_.clock.Now();  // the wait for the line may have begun an interval ago
  return road_.TakeValues(run, line);
}

/// Where the end of a frame may begin the next one, the end that was left in the port may stand ahead of a beginning of
/// the frame's own: between the two is no frame.
std::string TickedSource::ReadLine(PortTurn& port) {
  if (!ProtocolOf(session_).frameBeginsAtEnd) return road_.LineDecoders().ReadPolled(port, link_.PortInUse());
  while (link_.MSComm1->Peek().starts_with("\r\r")) link_.MSComm1->Read(1);
  std::string line = road_.LineDecoders().ReadPolled(port);
  if (line.size() > 1 && line.front() == '\r') line.erase(0, 1);
  return line;
}

/// Lines that come ahead of Start and during a pause must not be logged later, as if they were present ones. The line
/// under way stays: the job may begin with it. Where the end of a frame begins the next one, it stays too.
void TickedSource::MSComm1_OnComm() {
  if (ticks_.IsRunning() || StatusIs(session_, text::StatusAcquiringData)) return;
  const std::size_t lastEnd = link_.MSComm1->Peek().find_last_of("\r\n");
  if (lastEnd == std::string::npos) return;
  link_.MSComm1->Read(ProtocolOf(session_).frameBeginsAtEnd ? lastEnd : lastEnd + 1);
}

}  // namespace velk
