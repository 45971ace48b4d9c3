#pragma once

#include <memory>

#include "core/panel/data_words.h"
#include "core/panel/rate_meter.h"
#include "core/recorder.h"
#include "instruments/link/link.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/loop/clock.h"
#include "platform/platform.h"

namespace velk {

/// Tells how a job fares: what comes, what is recorded and what isn't, in the status bar, by the plug and by grey
/// values. It looks for itself while a job stands: once a second, and once in two while nothing is acquired.
class DataPanel {
 public:
  DataPanel(Session& session, const Platform& platform, MainView& view, const Recorder& recorder, Link& link);

  /// A job stands, from Connect on, or has ended: then nothing is told any more. Told at once.
  void FollowJob(bool stands);
  /// The job that stands acquires from now on, or has paused: the status tells which. Told at once.
  void FollowAcquiring();
  /// Tells what is to be told at this moment.
  void Look();
  /// The screen is about to follow a sample: a look that is due by now goes along, since to wake up and paint for it
  /// alone costs more than the look. By itself the panel looks only where the next sample stays away.
  void LookAlong();

 private:
  void ShowWords(const DataWords& words);
  void ShowRecording();

  Session& session_;
  Platform platform_;
  MainView& view_;
  const Recorder& recorder_;
  Link& link_;
  std::unique_ptr<Timer> timer_;
  std::int64_t nextLook_ = 0;  ///< ticks
  RateMeter rate_;             ///< of samples
  RateMeter rowRate_;          ///< of rows, which are fewer where little changes
  bool jobRuns_ = false;
  std::string shown_;
  bool warned_ = false;
  std::string recording_;
  OperatorText toolTip_;
  std::int64_t nextToolTip_ = 0;  ///< ticks: the disk is asked now and then only
};

}  // namespace velk
