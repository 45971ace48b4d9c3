#pragma once

#include <functional>
#include <string>

#include "core/sample_road.h"
#include "core/sources/sample_source.h"
#include "model/main_timers.h"
#include "model/main_view.h"
#include "opc/velk_opc_module.h"

namespace velk {

/// The items of OPC servers, joined to one line a second. They are connected from the start of the program on, and
/// again at Connect behind a job that has ended.
class OpcSource : public SampleSource {
 public:
  OpcSource(Session& session, const Platform& platform, MainTimers& timers, MainView& view, SampleRoad& road,
            VELKOPCModule& items);

  /// Connects the items where they aren't, and counts them.
  void Prepare() override { ConnectItems(); }
  /// Waits until each item has reported or failed, 5 s at most, or until Stop.
  void Check() override;
  void Start() override { timer7_.SetEnabled(true); }
  void Pause() override { timer7_.SetEnabled(false); }
  /// Ends every subscription and connection.
  void End() override;

  /// Connects the items where the session's protocol is OPC, and ends them where it is another.
  void FollowProtocol();
  /// The stored list is another one: items are connected anew.
  void FollowList();
  /// At the end of the program: nothing is connected any more.
  void ShutDown();

  /// The number of channels is another one, or some of them have got their first names.
  std::function<void()> onChannels;

 private:
  bool Serves() const;
  void ConnectItems();
  void CountItems();
  void TakeSeparators();
  // Timers of their own, beside the Timer1 of the base.
  void Timer7_Timer();  // NOLINT(bugprone-virtual-near-miss)
  void Timer8_Timer();  // NOLINT(bugprone-virtual-near-miss)
  void ShowPlug();

  Session& session_;
  Platform platform_;
  Timer& timer7_;
  Timer& timer8_;
  MainView& view_;
  SampleRoad& road_;
  VELKOPCModule& items_;
  std::string Text1_;  ///< the line of the last tick of Timer8; empty before the first one
  bool shutDown_ = false;
};

}  // namespace velk
