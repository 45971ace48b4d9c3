#include "model/status.h"

#include <array>
#include <optional>

namespace velk {

namespace {

/// The statuses that have a column in the table below.
enum Column { Ready, ReadyToAcquire, Acquiring, Paused, ReadyToPlayback, PlayingBack, PlayingBackPaused, ColumnCount };

std::optional<Column> ColumnOf(MessageId status) {
  switch (status) {
    case MessageId::StatusReady:
      return Ready;
    case MessageId::StatusReadyToAcquire:
      return ReadyToAcquire;
    case MessageId::StatusAcquiringData:
      return Acquiring;
    case MessageId::StatusAcquiringPaused:
      return Paused;
    case MessageId::StatusReadyToPlayback:
      return ReadyToPlayback;
    case MessageId::StatusPlayingBack:
      return PlayingBack;
    case MessageId::StatusPlayingBackPaused:
      return PlayingBackPaused;
    default:
      return std::nullopt;  // "Checking Hardware", "Confirming File Format": nothing is forced
  }
}

struct Row {
  std::string_view item;
  std::array<char, ColumnCount> force;  ///< '1' on, '0' off, ' ' untouched
};

// Columns: Ready, Ready to Acquire, Acquiring Data, Acquiring Paused, Ready to Playback, Playing Back, its pause.
constexpr Row kEnableTable[] = {
    {"mnuFileRecord", {'1', '1', '0', '0', '0', '0', '0'}},
    {"mnuFilePlayback", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuFileExit", {'1', '0', '0', '0', '1', '0', '1'}},
    {"mnuEditSerialPort", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuEditTable", {'0', '1', '0', '0', '1', '0', '0'}},
    {"mnuToolsDefine", {'0', '1', '0', '0', '1', '0', '0'}},
    {"mnuToolsRemove", {'0', '1', '0', '0', '1', '0', '0'}},
    {"mnuToolsInclude", {'0', '1', '0', '0', '1', '0', '0'}},
    {"mnuToolsCalibrate", {'0', '1', '0', '0', '0', '0', '0'}},
    {"mnuToolsReset", {'0', '1', '1', '1', '0', '0', '0'}},
    {"mnuToolsOrbenHardware", {'1', '1', '0', '1', ' ', '0', ' '}},
    {"mnuEditLoadTemplate", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuEditSaveTemplate", {'1', '1', '0', '1', '1', '0', '1'}},
    {"mnuEditDeleteTemplate", {'1', '1', '0', '1', '1', '0', '1'}},
    {"mnuEditUserOptions", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuEditLanguage", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuEditAutoDetect", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuEditClear", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuImprtLiveData", {'1', ' ', ' ', ' ', ' ', ' ', ' '}},
    {"mnuAcquireConnect", {'1', '0', '0', '0', '0', '0', '0'}},
    {"mnuAcquireStart", {' ', ' ', ' ', ' ', '1', '1', '1'}},
    {"mnuAcquireStop", {' ', ' ', ' ', ' ', '1', '1', '1'}},
};

void ForceOnEveryChange(MainView& view) {
  view.SetMenuEnabled("mnuEditClear", false);
  view.SetMenuEnabled("mnuEditDeleteTemplate", true);
  view.SetMenuEnabled("mnuEditSaveTemplate", true);
  view.SetMenuEnabled("mnuEditAutoDetect", false);
}

void ForceByTable(MainView& view, Column column) {
  for (const Row& row : kEnableTable)
    if (row.force[column] != ' ') view.SetMenuEnabled(row.item, row.force[column] == '1');
}

void NameAcquireMenu(const Session& session, MainView& view, Column column) {
  const bool playback = column == ReadyToPlayback || column == PlayingBack || column == PlayingBackPaused;
  view.SetMenuVisible("mnuAcquireConnect", !playback);
  view.SetMenuCaption(
      "mnuAcquire", session.Translator.Translate(playback ? MessageId::PlaybackMenu : MessageId::DataAcquisitionMenu));
}

void CaptionStart(const Session& session, MainView& view, MessageId caption) {
  const std::string text = session.Translator.Translate(caption);
  view.SetMenuCaption("mnuAcquireStart", text);
  view.SetButtonToolTip("Pause", text);
}

void FollowStatus(const Session& session, MainView& view, Column column) {
  switch (column) {
    case Ready:
      view.SetMenuEnabled("mnuViewSummaryReport", session.LogFileInUse.size() >= 2);
      break;
    case ReadyToPlayback:
      view.SetMenuEnabled("mnuViewSummaryReport", true);
      break;
    case Acquiring:
      CaptionStart(session, view, MessageId::Pause);
      view.SetPanel(2, session.Translator.Translate(MessageId::CurrentFile) + session.CurrentFile);
      break;
    case Paused:
      CaptionStart(session, view, MessageId::Resume);
      break;
    default:
      break;
  }
}

}  // namespace

void ChangeCurrentStatus(Session& session, MainView& view, MessageId status) {
  session.CurrentStatus = session.Translator.Translate(status);
  view.SetPanel(1, session.CurrentStatus);
  ForceOnEveryChange(view);
  if (const auto column = ColumnOf(status)) {
    ForceByTable(view, *column);
    NameAcquireMenu(session, view, *column);
    FollowStatus(session, view, *column);
  }
  view.SetHourglass(false);
  view.ResetCaption();
}

bool StatusIs(const Session& session, MessageId status) {
  return session.CurrentStatus == session.Translator.View(status);
}

}  // namespace velk
