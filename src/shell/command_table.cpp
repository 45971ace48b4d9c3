#include "shell/command_table.h"

#include <algorithm>
#include <iterator>

#include "instruments/table/protocols.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr MessageText kColumns[] = {
    text::StatusReady,           text::StatusReadyToAcquire, text::StatusAcquiringData,    text::StatusAcquiringPaused,
    text::StatusReadyToPlayback, text::StatusPlayingBack,    text::StatusPlayingBackPaused};

bool HasLog(const Session& session) {
  return session.LogFileInUse.size() >= 2;
}

bool HasComputedChannel(const Session& session) {
  return session.NumberOfFormulae >= 1;
}

bool IsUnitThatIsAsked(const Session& session) {
  return ProtocolOf(session).hasCommands;
}

/// Rows are written to a log, or come from one.
bool HasRunningLog(const Session& session) {
  const bool isAcquiring =
      session.CurrentStatus == text::StatusAcquiringData || session.CurrentStatus == text::StatusAcquiringPaused;
  return IsPlayback(session.CurrentStatus) || (isAcquiring && session.RecordToDB);
}

constexpr CommandRow kTable[] = {
    // File
    {.item = "mnuFileRecord", .key = "Record", .states = "1100000", .keyFollows = true},
    {.item = "mnuFilePlayback", .key = "PlayBack", .states = "1000000", .keyFollows = true},
    {.item = "mnuFileImportCSV"},
    {.item = "mnuFileExportSummary"},
    {.item = "mnuFileExportMDBtoCSV"},
    {.item = "mnuFileExportMDBtoXML"},
    {.item = "mnuFileExit", .key = "Exit", .states = "1000101", .keyFollows = true},
    // View
    {.item = "mnuViewToolBar", .whileConnecting = true},
    {.item = "mnuViewStatusBar", .whileConnecting = true},
    {.item = "mnuViewCompany", .whileConnecting = true},
    {.item = "mnuViewGoToToolBar", .shortcut = "F6", .whileConnecting = true},
    {.item = "mnuViewFitGraphs", .whileConnecting = true},
    {.item = "mnuViewNightColours", .whileConnecting = true},
    {.item = "mnuViewLargeValues", .whileConnecting = true},
    {.item = "mnuViewSummaryReport", .states = "?...1..", .condition = HasLog},
    {.item = "mnuViewAlarms", .key = "Alarms", .shortcut = "F8", .itemFollows = true, .whileConnecting = true},
    // Data Acquisition
    {.item = "mnuAcquireConnect", .key = "Acquire", .states = "1000000", .whileConnecting = true},
    {.item = "mnuAcquireStart", .key = "Pause", .states = "....111", .onAtStart = false},
    {.item = "mnuAcquireStop", .key = "Stop", .states = "....111", .onAtStart = false, .whileConnecting = true},
    // A chord: a key that was hit by accident must not end a recording.
    {.item = "mnuAcquireRecord", .key = "RecordToDB", .shortcut = "Ctrl+R", .states = "0111000", .itemFollows = true},
    {.item = "mnuAcquireComment", .shortcut = "F7", .windowHasKey = true, .states = "0111111"},
    // Edit Settings
    {.item = "mnuEditAutoDetect", .states = "1000000", .onEveryChange = '0'},
    {.item = "mnuEditSerialPort", .states = "1000000"},
    {.item = "mnuEditOPCServer", .states = "1000000"},
    {.item = "mnuEditTable", .states = "0100100"},
    {.item = "mnuEditSaveTemplate", .states = "1101101", .onEveryChange = '1'},
    {.item = "mnuEditLoadTemplate", .states = "1000000"},
    {.item = "mnuEditDeleteTemplate", .states = "1101101", .onEveryChange = '1'},
    {.item = "mnuEditClear", .states = "1000000", .onEveryChange = '0'},
    {.item = "mnuEditUserOptions", .states = "1000000"},
    {.item = "mnuEditLanguage", .states = "1000000"},
    // Tools
    {.item = "mnuToolsDefine", .states = "0100100"},
    {.item = "mnuToolsRemove", .states = "0100100", .condition = HasComputedChannel},
    {.item = "mnuToolsInclude", .states = "0100100", .condition = HasComputedChannel},
    {.item = "mnuImprtLiveData", .states = "1......"},
    {.item = "mnuToolsCalibrate", .states = "0100000"},
    {.item = "mnuToolsReset", .states = "0111000", .condition = IsUnitThatIsAsked},
    {.item = "mnuToolsOrbenHardware", .states = "1101.0."},
    {.item = "mnuToolsLiveSurvey", .condition = HasRunningLog},
    {.item = "mnuToolsSurvey"},
    {.item = "mnuTools3DWell"},
    {.item = "mnuToolsWellProfileTable"},
    // Window
    {.item = "mnuWindowCascade", .whileConnecting = true},
    {.item = "mnuWindowTileVertically", .whileConnecting = true},
    {.item = "mnuWindowTileHorizontally", .whileConnecting = true},
    {.item = "mnuWindowArrange", .whileConnecting = true},
    {.item = "mnuWindowNext", .shortcut = "Ctrl+Tab", .windowHasKey = true, .whileConnecting = true},
    // Help
    {.item = "mnuHelpContents", .key = "Help", .shortcut = "F1", .windowHasKey = true, .whileConnecting = true},
    {.item = "mnuHelpAbout", .whileConnecting = true},
    // Toolbar
    {.key = "Edit", .whileConnecting = true},
    {.key = "Tools", .whileConnecting = true},
    {.key = "Command1", .whileConnecting = true},
};

}  // namespace

std::span<const CommandRow> CommandTable() {
  return kTable;
}

std::optional<std::size_t> StatusColumn(const MessageText& status) {
  const auto* const found = std::find(std::begin(kColumns), std::end(kColumns), status);
  if (found == std::end(kColumns)) return std::nullopt;
  return static_cast<std::size_t>(found - std::begin(kColumns));
}

bool IsPlayback(const MessageText& status) {
  return status == text::StatusReadyToPlayback || status == text::StatusPlayingBack ||
         status == text::StatusPlayingBackPaused;
}

std::map<std::string_view, bool> ForcedStates(std::span<const CommandRow> table, const MessageText& status,
                                              const Session& session) {
  std::map<std::string_view, bool> forced;
  const auto column = StatusColumn(status);
  for (const CommandRow& row : table) {
    for (const char state : {row.onEveryChange, column ? row.states[*column] : '.'}) {
      if (state == '.') continue;
      forced[row.Name()] = state == '?' ? row.condition(session) : state == '1';
    }
  }
  return forced;
}

}  // namespace velk
