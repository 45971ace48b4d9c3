#include "wells/windows/live_survey_command.h"

#include <filesystem>
#include <utility>

#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
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

int StationsIn(Connection& connection) {
  const auto table = Catalog(connection).Find(kSurveyData);
  if (!table) return 0;
  Command count(connection, "SELECT count(*) FROM " + QuoteName(table->name));
  return count.Next() ? static_cast<int>(count.Integer(0)) : 0;
}

/// Of a file that is damaged nothing can be lost any more.
int StationsInFile(const std::string& path) {
  if (!FileExists(path)) return 0;
  try {
    return StationsIn(*Connection::Open(path, OpenMode::ReadOnly));
  } catch (const RuntimeError&) {
    return 0;
  }
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
    const auto fields = run([&] { return FieldsOfLog(log_().channels); });
    const auto answer = host_.Ask<frmImportSurvey>(fields, survey_.Choice(), IsOn());
    if (!answer) return;
    if (answer->stops) return Stop();
    const OperatorText question = run([&] { return WhatWouldGo(); });
    const auto isSure = [&] {
      return platform_.dialogs.Message({question, {}, Buttons::YesNo, BoxIcon::Question, {}, {}, true}) == Answer::Yes;
    };
    if (question.IsEmpty() || isSure()) run([&] { Start(answer->choice); });
  });
}

std::string LiveSurveyCommand::OwnPath() const {
  return platform_.settings.Directory() + "/Survey.mdb";
}

/// Rows of the editor that are in no file, or the stations of a live survey: a start takes the place of both.
OperatorText LiveSurveyCommand::WhatWouldGo() const {
  OperatorText question;
  if (HasUnsavedRows(well_)) question = text::SurveyWouldGo;
  const LiveLog log = log_();
  const int stations = (log.to ? StationsIn(*log.to) : 0) + StationsInFile(OwnPath());
  if (stations == 0 && !IsOn()) return question;
  if (!question.IsEmpty()) question += "\n\n";
  return question + text::LiveSurveyWouldGo + std::to_string(stations) + text::BeginLiveSurvey;
}

/// The log may have ended behind the window.
void LiveSurveyCommand::Start(const LiveSurveyChoice& choice) {
  const LiveLog log = log_();
  if (log.channels.empty()) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  if (ownFile_) End();
  RemoveSurveyFile(OwnPath());
  if (!log.to) ownFile_ = MakeSurveyFile(OwnPath());
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
