#include "shell/shut_down.h"

#include <QDir>
#include <utility>

#include "base/numbers.h"
#include "base/text_qt.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/dialogs/procedure.h"
#include "platform/texts.h"
#include "settings/settings_io.h"
#include "shell/texts.h"

namespace velk {

namespace {

constexpr int kCloseAgainMs = 20;

}  // namespace

ShutDown::ShutDown(const Parts& parts) : parts_(parts), closeAgain_(parts.platform.clock.MakeTimer()) {
  parts_.form.onQueryUnload = [this] { return MDIForm_QueryUnload(); };
  closeAgain_->SetInterval(kCloseAgainMs);
  closeAgain_->SetHandler([this] {
    closeAgain_->SetEnabled(false);
    parts_.form.close();
  });
}

void ShutDown::Bind(CommandBinder& commands) {
  commands.Bind("mnuFileExit", [this] { mnuFileExit_Click(); });
}

void ShutDown::SaveAndEnd() {
  parts_.session.AskOnExit = false;
  parts_.form.close();
}

bool ShutDown::IsSureToExit() {
  OperatorText question = text::SureToExit;
  const Session& session = parts_.session;
  if (session.RecordToDB && session.AcquireStarted)
    question += "\n\n" + (text::IsRecordingTo + session.LogFileInUse) + "\n" + text::RowsSoFar +
                Format(static_cast<double>(session.Data.rows), "#,##0") + text::RecordingEnds;
  const OperatorText lost = alsoLost ? alsoLost() : OperatorText();
  if (!lost.IsEmpty()) question += "\n\n" + lost;
  return parts_.platform.dialogs.Message({.text = question,
                                          .title = text::ProgramName,
                                          .buttons = Buttons::YesNo,
                                          .icon = BoxIcon::Question,
                                          .safeDefault = true}) == Answer::Yes;
}

void ShutDown::mnuFileExit_Click() {
  RunProcedure({parts_.platform.dialogs, "mnuFileExit_Click"}, [&](const Statements& run) {
    if (!IsSureToExit()) return;
    // First of all: who cancels a save that fails keeps the program as it is. The window's frame is the way out.
    run([&] { SaveSettings(parts_.session, parts_.platform.settings); });
    settingsSaved_ = true;
    parts_.session.AskOnExit = false;
    parts_.form.close();
  });
}

bool ShutDown::MDIForm_QueryUnload() {
  if (parts_.session.AskOnExit && !IsSureToExit()) return false;
  parts_.session.AskOnExit = false;
  SaveAtEnd();
  parts_.sources.ShutDown();
  if (IsAnythingRunning()) {
    // It has to leave first.
    StopWhatRuns();
    parts_.platform.dialogs.SetEnding();
    closeAgain_->SetEnabled(true);
    return false;
  }
  EndJob();
  parts_.session.ProgramEnding = true;
  parts_.graphs.UnloadAll();
  MDIForm_Unload();
  return true;
}

bool ShutDown::IsAnythingRunning() const {
  return parts_.road.IsRunning() || parts_.sources.IsRunning() || parts_.acquisition.IsConnecting() ||
         parts_.playback.IsRunning() || parts_.platform.dialogs.LongTasks() > 0;
}

void ShutDown::SaveAtEnd() {
  if (std::exchange(settingsSaved_, true)) return;
  RunProcedure({parts_.platform.dialogs, "MDIForm_QueryUnload"},
               [&](const Statements& run) { run([&] { SaveSettings(parts_.session, parts_.platform.settings); }); });
}

void ShutDown::StopWhatRuns() {
  if (parts_.playback.IsOpen()) return parts_.playback.Close();
  if (!StatusIs(parts_.session, text::StatusReady)) parts_.acquisition.mnuAcquireStop_Click();
}

void ShutDown::EndJob() {
  if (std::exchange(jobEnded_, true)) return;
  StopWhatRuns();
  if (ProtocolOf(parts_.session).hasPort) parts_.link.CloseODataCom();
}

void ShutDown::MDIForm_Unload() {
  parts_.link.Board.CloseComPort();
  QDir::setCurrent(ToQt(parts_.session.DirectoryAtStart));
}

}  // namespace velk
