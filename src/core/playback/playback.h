#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/playback/file_channels.h"
#include "core/playback/pace.h"
#include "core/playback/place.h"
#include "core/sample_plotter.h"
#include "log/log_reader.h"
#include "log/playback_file.h"
#include "model/graph_window.h"
#include "model/main_timers.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/dialogs/procedure.h"
#include "platform/platform.h"

namespace velk {

/// Runs a recorded log through the graphs as if it came from the instrument, at a speed of the operator's: a row a tick
/// of Timer3, scaled and averaged again, additional parameters computed anew. Nothing is recorded and no alarm raised.
/// The file is only read. The unit's set-up stands aside meanwhile and is back at "Ready".
class Playback {
 public:
  Playback(Session& session, const Platform& platform, MainTimers& timers, MainView& view, GraphWindows& graphs);
  ~Playback();
  Playback(const Playback&) = delete;
  Playback& operator=(const Playback&) = delete;

  /// The menu command: asks for a file and makes it ready to be played. One that can't be says why, and nothing has
  /// changed.
  void mnuFilePlayback_Click();

  // By the status, as Acquisition tells it.
  /// From the first row of the file that is ready.
  void Start(const Statements& run);
  void Pause();
  void Resume();
  /// Ends with the next tick; at once where no ticks come.
  void Stop();

  /// The speed bar was moved: 1 to 1000, that many rows a second.
  void HScroll1_Change(int position);

  /// At the end of the program: no row follows. Nothing is said, and the status stays.
  void Close();
  bool IsOpen() const { return reader_ != nullptr; }
  /// Rows of a file, perhaps of the one that plays, were deleted or have come back.
  void FollowRows();
  /// Called with a file that was chosen, ahead of its opening; what it raises is shown as a fault of the file.
  std::function<void(const std::string& path)> onChosen;
  /// Called with each row that was played.
  std::function<void(const LogRow& row)> onRow;
  /// The file was left, at its end or by Stop.
  std::function<void()> onEnd;
  /// A row or the look at a file is on the stack, perhaps with a box on top of it.
  bool IsRunning() const { return running_ > 0; }

 private:
  void ConfirmFile(const std::string& path);
  void Accept(const Statements& run, PlaybackFile file);
  void InitialisePlayback(const Statements& run, const PlaybackFile& file);
  void ShowControls();
  void Refuse(const std::string& logBefore);

  void Play();
  void SetSpeed(int speed);
  void OnTick();
  void Timer3_Timer();
  void PlayRow(const Statements& run);
  /// True where the playback has ended instead.
  bool EndsHere(const Statements& run);
  void TakeValues(const LogRow& row);
  void DrawRow(const Statements& run);

  void Finish(const MessageText& said);
  void ReturnToReady();

  Session& session_;
  Platform platform_;
  MainTimers& timers_;
  MainView& view_;
  GraphWindows& graphs_;
  SamplePlotter plotter_;
  const Report tickReport_;
  UnitSetUp unit_;
  PlaybackPace pace_;
  PlaybackPlace place_;
  std::unique_ptr<LogReader> reader_;
  std::unique_ptr<RowSource> rows_;  ///< from Start on
  bool atEnd_ = false;               ///< no row was behind the last one when it was played
  bool finishing_ = false;           ///< the box that says so stands
  bool timer5Rests_ = false;         ///< it ran before the first row
  int running_ = 0;
};

}  // namespace velk
