#pragma once

#include <functional>
#include <memory>

#include "core/sources/buffered_source.h"
#include "core/sources/driverless_source.h"
#include "core/sources/line_source.h"
#include "core/sources/opc_source.h"
#include "core/sources/page_source.h"
#include "core/sources/port_ticks.h"
#include "core/sources/ticked_source.h"

namespace velk {

/// All sources of samples. One at a time serves the session: that of its protocol.
class SampleSources {
 public:
  SampleSources(Session& session, const Platform& platform, MainTimers& timers, Link& link, SampleRoad& road,
                std::unique_ptr<PageFetch> pages, MainView& view, VELKOPCModule& opcItems);
  ~SampleSources();
  SampleSources(const SampleSources&) = delete;
  SampleSources& operator=(const SampleSources&) = delete;

  /// The source of the session's present protocol.
  SampleSource& Current();
  /// At start-up and wherever the protocol may have changed: what the source does outside of a job too.
  void FollowProtocol();
  /// The items of OPC servers, ahead of the rest of the start.
  void ConnectOPCItems();
  /// The list of items that is stored is another one.
  void FollowOpcList() { opc_.FollowList(); }
  /// At the end of the program: nothing is asked for any more.
  void ShutDown();
  /// Work of a source is on the stack.
  bool IsRunning() const;

  /// The instrument of a running job has not answered in time; told behind the tick that waited for it.
  std::function<void()> onTimeOut;
  /// A source has counted its channels anew.
  std::function<void()> onChannels;

 private:
  Session& session_;
  MainTimers& timers_;
  Link& link_;
  PortTicks ticks_;
  LineSource lines_;
  TickedSource ticked_;
  BufferedSource buffered_;
  PageSource pages_;
  OpcSource opc_;
  DriverlessSource driverless_;
};

}  // namespace velk
