#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/sample_road.h"
#include "core/stacked_work.h"
#include "core/tick_port.h"
#include "instruments/decoders/intermittent.h"
#include "instruments/link/link.h"
#include "instruments/reading/line_length.h"
#include "model/main_timers.h"
#include "platform/pages/page_fetch.h"

namespace velk {

/// The sources that the program itself asks for samples: the plain port at each tick, an instrument that sends its
/// buffer, the page of a networked unit.
class Polling {
 public:
  Polling(Session& session, const Platform& platform, MainView& view, MainTimers& timers, Link& link,
          Recorder& recorder, SampleRoad& road, std::unique_ptr<PageFetch> pages);

  /// A tick of a polled protocol. Never entered again while it runs: two readers would share one port. A tick that lies
  /// below a box does not run, and a later one takes the port over from it: samples go on behind boxes.
  void Timer1_Timer();

  /// The page of a networked recorder as one table.
  void Timer4_Timer();
  /// The page of a networked unit, by the protocol in its form of named cells or of the operator panel.
  void Timer5_Timer();
  /// Switches the timer of a networked unit on, and any other off.
  void EnablePageTimer();
  /// One page fetched; for Connect. Reports its own failure.
  bool CanFetchPage();
  /// While a page is being fetched below on the stack no other can be: gives that one up and runs `task` behind it.
  /// False where there is none.
  bool PutOffBehindPage(std::function<void()> task);

  /// Bytes have come on the plain port: of an instrument that buffers its samples, or outside of a polled job.
  void MSComm1_OnComm();
  /// At Start and Resume: readies the plain port where the protocol needs it. False after an error box.
  bool OpenPort();

  /// At the end of the program: no more ticks, and the page under way is given up.
  void End();

  /// A tick, a page or a burst is on the stack.
  bool IsRunning() const { return ticks_.Depth() > 0 || analysing_ || passes_ > 0; }

 private:
  TickPort TakePort();
  Values Poll(const Statements& run, bool& timedOut);
  Values Learn(const Statements& run, bool& timedOut);
  bool TakeTimeOut();
  void DropLinesOutsideOfTheJob();
  void PauseAfterTimeOut();
  void KeepListening();
  void IntermittentDataAnalysis();
  Values TakeBufferedLine(const Statements& run, int number);
  void PassPage(const char* procedure, const std::function<std::optional<std::string>()>& read);
  void FetchAndPass(const char* procedure, const std::function<std::optional<std::string>()>& read);

  Session& session_;
  Platform platform_;
  MainView& view_;
  MainTimers& timers_;
  Link& link_;
  Recorder& recorder_;
  SampleRoad& road_;
  std::unique_ptr<PageFetch> pages_;
  IntermittentLines lines_;
  std::string Text1_;  ///< the last line that a page gave
  std::int64_t nextFetch_ = 0;
  std::function<void()> behindPage_;
  const TickPort* portHolder_ = nullptr;
  StackedWork ticks_{platform_.dialogs};
  StackedWork fetches_{platform_.dialogs};
  int passes_ = 0;  ///< pages on the stack, from the fetch to the end of the sample
  std::int64_t pagesCame_ = 0;
  bool analysing_ = false;
  bool ended_ = false;
};

}  // namespace velk
