#pragma once

#include "core/polling.h"
#include "core/recorder.h"
#include "core/sample_road.h"
#include "instruments/link/link.h"
#include "model/main_timers.h"

namespace velk {

/// Owns the status machine of acquisition: Connect, Start, Pause, Resume, Stop and the recording button.
class Acquisition {
 public:
  Acquisition(Session& session, const Platform& platform, MainView& view, GraphWindows& graphs, MainTimers& timers,
              Link& link, Recorder& recorder, SampleRoad& road, Polling& polling);

  void mnuAcquireConnect_Click();
  /// Start, Pause or Resume, by the status at entry.
  void mnuAcquireStart_Click();
  void mnuAcquireStop_Click();
  /// The toolbar's recording button.
  void RecordToDB_Click();

  /// Connect is on the stack, perhaps waiting for the unit: nothing but Stop works.
  bool IsConnecting() const { return connecting_; }

 private:
  void Connect(const Statements& run);
  void CopyParameters();
  /// False when Stop ended it.
  bool CheckHardware();
  void CheckPort();
  bool WaitForLine();
  void Tell(const MessageText& text, const MessageText& title, BoxIcon icon);
  void ShowReadyToAcquire();

  void Start(const Statements& run);
  bool NeedsFile();
  void BeginJob(const Statements& run);
  void SetStartTimes();
  void WriteTimeAxes();
  void Run(const Statements& run);
  void Pause();
  void CaptionStartButton(const MessageText& caption, int image);
  void ReleaseGraphToolbars();

  Session& session_;
  Platform platform_;
  MainView& view_;
  GraphWindows& graphs_;
  MainTimers& timers_;
  Link& link_;
  Recorder& recorder_;
  SampleRoad& road_;
  Polling& polling_;
  bool connecting_ = false;
};

}  // namespace velk
