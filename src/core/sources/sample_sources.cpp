#include "core/sources/sample_sources.h"

#include <utility>

#include "instruments/table/protocols.h"

namespace velk {

SampleSources::SampleSources(Session& session, const Platform& platform, MainTimers& timers, Link& link,
                             SampleRoad& road, std::unique_ptr<PageFetch> pages, MainView& view,
                             VELKOPCModule& opcItems)
    : session_(session),
      timers_(timers),
      link_(link),
      ticks_(session, platform, timers, link, road,
             [this] {
               if (onTimeOut) onTimeOut();
             }),
      lines_(session, platform, link, road, ticks_),
      ticked_(session, platform, link, road, ticks_),
      buffered_(session, platform, timers, link, road),
      pages_(session, platform, timers, road, std::move(pages)),
      opc_(session, platform, timers, view, road, opcItems),
      driverless_(platform) {
  opc_.onChannels = [this] {
    if (onChannels) onChannels();
  };
  // A tick that was on its way when the timer was switched off belongs to nobody.
  timers_.Timer1->SetHandler([this] {
    if (timers_.Timer1->Enabled()) Current().Timer1_Timer();
  });
  link_.MSComm1->onReadyRead = [this] { Current().MSComm1_OnComm(); };
}

SampleSources::~SampleSources() {
  ShutDown();
  link_.MSComm1->onReadyRead = nullptr;
  link_.onLine = nullptr;
}

SampleSource& SampleSources::Current() {
  switch (ProtocolOf(session_).driver) {
    case Driver::EventLineDriver:
      return lines_;
    case Driver::PolledByTick:
      // Behind an own unit the line driver serves, and holds the device.
      if (ComputeUseODataCom(session_)) return lines_;
      return ticked_;
    case Driver::BufferedLines:
      return buffered_;
    case Driver::NetworkedPage:
      return pages_;
    case Driver::OpcItems:
      return opc_;
    case Driver::None:
      break;
  }
  return driverless_;
}

void SampleSources::FollowProtocol() {
  pages_.FollowProtocol();
  opc_.FollowProtocol();
}

void SampleSources::ConnectOPCItems() {
  if (ProtocolOf(session_).driver == Driver::OpcItems) opc_.FollowProtocol();
}

void SampleSources::ShutDown() {
  timers_.Timer1->SetEnabled(false);
  pages_.ShutDown();
  opc_.ShutDown();
}

bool SampleSources::IsRunning() const {
  return ticks_.IsRunning() || buffered_.IsRunning() || pages_.IsRunning();
}

}  // namespace velk
