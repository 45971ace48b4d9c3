#include "model/status.h"
#include "model/texts.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace velk {

namespace {

// Columns of the table below. "Checking Hardware" and "Confirming File Format" have none: nothing is forced then.
enum Column { Ready, ReadyToAcquire, Acquiring, Paused, ReadyToPlayback, PlayingBack, PlayingBackPaused, ColumnCount };

constexpr MessageText kColumns[] = {
    text::StatusReady,           text::StatusReadyToAcquire, text::StatusAcquiringData,    text::StatusAcquiringPaused,
    text::StatusReadyToPlayback, text::StatusPlayingBack,    text::StatusPlayingBackPaused};

std::optional<Column> ColumnOf(const MessageText& status) {
  const auto* const found = std::find(std::begin(kColumns), std::end(kColumns), status);
  if (found == std::end(kColumns)) return std::nullopt;
  return static_cast<Column>(found - std::begin(kColumns));
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

void NameAcquireMenu(MainView& view, Column column) {
  const bool playback = column == ReadyToPlayback || column == PlayingBack || column == PlayingBackPaused;
  view.SetMenuVisible("mnuAcquireConnect", !playback);
  view.SetMenuCaption("mnuAcquire", playback ? text::PlaybackMenu : text::DataAcquisitionMenu);
}

void CaptionStart(MainView& view, const MessageText& caption) {
  view.SetMenuCaption("mnuAcquireStart", caption);
  view.SetButtonToolTip("Pause", caption);
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
      CaptionStart(view, text::Pause);
      view.SetPanel(2, text::CurrentFile + session.CurrentFile);
      break;
    case Paused:
      CaptionStart(view, text::Resume);
      break;
    default:
      break;
  }
}

}  // namespace

void ChangeCurrentStatus(Session& session, MainView& view, const MessageText& status) {
  session.CurrentStatus = status;
  view.SetPanel(1, session.CurrentStatus);
  ForceOnEveryChange(view);
  if (const auto column = ColumnOf(status)) {
    ForceByTable(view, *column);
    NameAcquireMenu(view, *column);
    FollowStatus(session, view, *column);
  }
  view.SetHourglass(false);
  view.ResetCaption();
}

bool StatusIs(const Session& session, const MessageText& status) {
  return session.CurrentStatus == status;
}

}  // namespace velk
