#pragma once

#include <functional>

#include "core/playback/playback.h"
#include "core/recorder.h"
#include "core/sample_road.h"
#include "core/sources/sample_sources.h"
#include "instruments/link/link.h"

namespace velk {

/// Owns the status machine: Connect, Start, Pause, Resume, Stop and the recording button. In playback Start, Pause,
/// Resume and Stop are those of Playback.
class Acquisition {
 public:
  Acquisition(Session& session, const Platform& platform, MainView& view, GraphWindows& graphs, Link& link,
              Recorder& recorder, SampleRoad& road, SampleSources& sources, Playback& playback);
  ~Acquisition();
  Acquisition(const Acquisition&) = delete;
  Acquisition& operator=(const Acquisition&) = delete;

  void mnuAcquireConnect_Click();
  /// Start, Pause or Resume, by the status at entry.
  void mnuAcquireStart_Click();
  void mnuAcquireStop_Click();
  /// The instrument of a running job has not answered: the job is paused, so that Resume is enough.
  void PauseAfterTimeOut();
  /// The toolbar's recording button.
  void RecordToDB_Click();

  /// A job stands from the end of Connect to Stop.
  std::function<void(bool stands)> onJob;
  /// Start, Pause or Resume: from now on data are acquired, or not; the status tells which.
  std::function<void()> onAcquiring;
  /// The job ends; its log is still open.
  std::function<void()> onEnding;

  /// Connect is on the stack, perhaps waiting for the unit: nothing but Stop works.
  bool IsConnecting() const { return connecting_; }

 private:
  using Work = void (Acquisition::*)(const Statements& run);
  /// What Start and Stop do in a status.
  struct StatusWork {
    MessageText status;
    Work start, stop;
  };
  static const StatusWork kStatusWork[];
  const StatusWork* PresentWork() const;

  void Connect(const Statements& run);
  void CopyParameters();
  /// False when Stop ended it.
  bool CheckHardware();
  void ShowReadyToAcquire();

  void Start(const Statements& run);
  void Resume(const Statements& run);
  void Pause(const Statements& run);
  void StopJob(const Statements& run);
  bool NeedsFile();
  void BeginJob(const Statements& run);
  void Run(const Statements& run);
  void StartPlayback(const Statements& run) { playback_.Start(run); }
  void PausePlayback(const Statements&) { playback_.Pause(); }
  void ResumePlayback(const Statements&) { playback_.Resume(); }
  void StopPlayback(const Statements&) { playback_.Stop(); }

  Session& session_;
  Platform platform_;
  MainView& view_;
  GraphWindows& graphs_;
  Link& link_;
  Recorder& recorder_;
  SampleRoad& road_;
  SampleSources& sources_;
  Playback& playback_;
  bool connecting_ = false;
};

}  // namespace velk
