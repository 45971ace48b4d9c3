#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/operator_text.h"
#include "i18n/windows/window_host.h"
#include "model/main_timers.h"
#include "platform/platform.h"
#include "wells/live_survey.h"
#include "wells/well.h"

namespace velk {

/// The log that a live survey would follow: where its rows are written to, and its channels.
struct LiveLog {
  std::shared_ptr<Connection> to;
  std::vector<std::string> channels;
};

/// The menu command, and the path that is computed anew every five seconds while a survey runs.
class LiveSurveyCommand {
 public:
  /// All outlive this. `log` gives the log that is open now, or no connection; `onPath` is called behind each
  /// computation of the path.
  LiveSurveyCommand(WindowHost& host, Well& well, const Platform& platform, MainTimers& timers,
                    std::function<LiveLog()> log, std::function<void()> onPath);

  void mnuToolsLiveSurvey_Click();
  /// A row of the log was recorded or played. Raises nothing: what fails here costs no row of the log. It is told
  /// behind the sample, and the survey ends.
  void Step(const LogRow& row);
  bool IsOn() const { return survey_.IsOn(); }
  /// The log is about to be left. The path is computed once more, where it is still open.
  void Stop();

 private:
  std::string OwnPath() const;
  OperatorText WhatWouldGo() const;
  void Start(const LiveSurveyChoice& choice);
  void End();
  void Timer6_Timer();
  void ComputePath();

  WindowHost& host_;
  Well& well_;
  Platform platform_;
  MainTimers& timers_;
  const std::function<LiveLog()> log_;
  const std::function<void()> onPath_;
  LiveSurvey survey_;
  std::shared_ptr<Connection> ownFile_;  ///< what a file that plays is surveyed into
  bool told_ = false;                    ///< that the path can't be computed
};

}  // namespace velk
