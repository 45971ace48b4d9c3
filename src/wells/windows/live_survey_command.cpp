#include "wells/windows/live_survey_command.h"

#include <filesystem>

#include "platform/dialogs/procedure.h"
#include "platform/loop/clock.h"
#include "platform/settings/settings.h"
#include "wells/texts.h"
#include "wells/windows/frm_import_survey.h"

namespace velk {

namespace {

constexpr int kRefreshMilliseconds = 5000;

/// What a played log was surveyed into. Each new survey takes the place of the one before.
void RemoveSurveyFile(const std::string& path) {
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(path + suffix, ignored);
}

std::shared_ptr<Connection> MakeSurveyFile(const std::string& path) {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  return Connection::Open(path, OpenMode::CreateNew);
}

}  // namespace

LiveSurveyCommand::LiveSurveyCommand(WindowHost& host, Well& well, const Platform& platform, MainTimers& timers,
                                     std::function<LiveLog()> log, std::function<void()> onPath)
    : host_(host),
      well_(well),
      platform_(platform),
      timers_(timers),
      log_(std::move(log)),
      onPath_(std::move(onPath)),
      survey_(well) {
  timers_.Timer6->SetInterval(kRefreshMilliseconds);
  timers_.Timer6->SetHandler([this] { Timer6_Timer(); });
}

void LiveSurveyCommand::mnuToolsLiveSurvey_Click() {
  RunProcedure({platform_.dialogs, "mnuToolsLiveSurvey_Click"}, [&](const Statements& run) {
    const auto answer = host_.Ask<frmImportSurvey>(FieldsOfLog(log_().channels), survey_.Choice(), IsOn());
    if (!answer) return;
    if (answer->stops) return Stop();
    if (MayLoseSurvey()) run([&] { Start(answer->choice); });
  });
}

/// The rows of the editor go; rows that are in no file are asked about.
bool LiveSurveyCommand::MayLoseSurvey() {
  if (well_.SurveyIsKept || well_.Survey.size() < 2) return true;
  return platform_.dialogs.Message({text::SurveyWouldGo, {}, Buttons::YesNo, BoxIcon::Question, {}, {}, true}) ==
         Answer::Yes;
}

/// The log may have ended behind the window.
void LiveSurveyCommand::Start(const LiveSurveyChoice& choice) {
  const LiveLog log = log_();
  if (log.channels.empty()) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  if (ownFile_) End();
  const std::string path = platform_.settings.Directory() + "/Survey.mdb";
  RemoveSurveyFile(path);
  if (!log.to) ownFile_ = MakeSurveyFile(path);
  survey_.Start(choice, log.to ? log.to : ownFile_, log.channels);
  told_ = false;
  timers_.Timer6->SetEnabled(true);
}

void LiveSurveyCommand::Step(const LogRow& row) {
  try {
    survey_.LiveSurveyStep(row);
  } catch (const RuntimeError& error) {
    End();
    platform_.clock.Post([this, said = text::LiveSurveyEnded + error.Text()] {
      platform_.dialogs.Message({said, {}, Buttons::Ok, BoxIcon::Exclamation});
    });
  }
}

void LiveSurveyCommand::Stop() {
  if (IsOn()) ComputePath();
  End();
}

void LiveSurveyCommand::End() {
  survey_.Stop();
  ownFile_.reset();
  timers_.Timer6->SetEnabled(false);
}

/// The log may have been closed.
void LiveSurveyCommand::Timer6_Timer() {
  if (IsOn())
    ComputePath();
  else
    End();
}

/// A path that can't be computed is told once, not each five seconds, and by no box in the way of who has called; the
/// one of before stays.
void LiveSurveyCommand::ComputePath() {
  try {
    survey_.LoadSurveyAndCalculate();
  } catch (const RuntimeError& error) {
    if (std::exchange(told_, true)) return;
    platform_.clock.Post([this, said = error.Text() + OperatorText(" - Timer6_Timer")] {
      platform_.dialogs.Message({said, {}, Buttons::Ok, BoxIcon::Exclamation});
    });
    return;
  }
  onPath_();
}

}  // namespace velk
