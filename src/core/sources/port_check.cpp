#include "core/sources/port_check.h"

#include <algorithm>

#include "core/texts.h"
#include "instruments/reading/heard.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "platform/dialogs/dialogs.h"
#include "platform/loop/clock.h"

namespace velk {

namespace {

constexpr double kMillisecondsPerDay = 86'400'000;
/// However slow the sampling.
constexpr std::int64_t kLongestCheckMs = 15'000;

bool WaitForLine(const Session& session, Clock& clock, const Link& link) {
  const double told = session.TheTimeOut * session.SamplingRate * kMillisecondsPerDay;
  const auto wait = static_cast<std::int64_t>(std::min(told, static_cast<double>(kLongestCheckMs)));
  const std::int64_t start = clock.Ticks();
  while (link.LinesSeen() == 0) {
    if (session.StopRequested || clock.Ticks() - start >= wait) return false;
    clock.WaitRound();
  }
  return true;
}

}  // namespace

void CheckPort(Session& session, const Platform& platform, Link& link) {
  session.UseODataCom = ComputeUseODataCom(session);
  link.EnablePort();
  if (!session.UseODataCom) return;  // a polled port that has opened will do
  link.ClosePlainPort();
  link.SetODataCom();
  if (link.ODataCom1.IsOpen() && !WaitForLine(session, platform.clock, link) && !session.StopRequested)
    platform.dialogs.Message(
        {TimeOutText(text::TimeOutCheckHardware, link.PortInUse(), session, {link.ODataCom1.BytesHeard()}),
         text::TimeOutTitle, Buttons::Ok, BoxIcon::Critical});
}

}  // namespace velk
