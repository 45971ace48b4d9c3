#include "shell/application.h"

#include <QCoreApplication>
#include <QMdiArea>
#include <algorithm>

#include "base/text_qt.h"
#include "core/commands.h"
#include "core/windows/alarms_window.h"
#include "core/windows/large_values_window.h"
#include "exchange/jet_log.h"
#include "exchange/text_encoding.h"
#include "exchange/windows/frm_export.h"
#include "exchange/windows/import_csv_command.h"
#include "instruments/detection/auto_detect.h"
#include "instruments/link/link_lease.h"
#include "instruments/link/port_listener.h"
#include "instruments/table/protocols.h"
#include "instruments/unit/board_calibration.h"
#include "instruments/windows/auto_detect_box.h"
#include "instruments/windows/calibrate_command.h"
#include "instruments/windows/serial_port_command.h"
#include "instruments/windows/unit_settings_command.h"
#include "log/windows/real_time_report.h"
#include "opc/windows/frm_main_opc.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "platform/ports/port_devices.h"
#include "reports/windows/summary_report_command.h"
#include "settings/settings_io.h"
#include "settings/settings_keys.h"
#include "settings/windows/edit_table_command.h"
#include "shell/first_steps.h"
#include "shell/simulated_unit.h"
#include "shell/texts.h"
#include "wells/texts.h"
#include "wells/windows/frm_3d_well.h"
#include "wells/windows/report_form.h"
#include "wells/windows/survey_command.h"

namespace velk {

namespace {

std::string ProgramFolder(const Services& services) {
  return services.programFolder.empty() ? FromQt(QCoreApplication::applicationDirPath()) : services.programFolder;
}

/// Beside the program where it is installed; in its own folder where it was built.
std::string JetReaderIn(const std::string& programFolder) {
  const std::string beside = programFolder + "/velk_jet_reader";
  return FileExists(beside) ? beside : programFolder + "/../../jet_reader/velk_jet_reader";
}

/// Whether somebody has chosen the instrument: the protocol of a first start is a preset, which is stored with the
/// rest.
bool WasChosen(const Session& session, SettingsStore& settings) {
  if (settings.Find(kLiveSettings, "Protocol", "SerialPortChosen")) return true;
  return !session.SerialData.empty() && session.SerialData != protocol::Formatted;
}

}  // namespace

Application::Application(const Services& services)
    : platform_(services.platform),
      timers_(platform_.clock),
      windows_(platform_.dialogs, services.translation),
      jobWindows_(windows_),
      questions_(services.questions ? *services.questions : jobWindows_),
      refresh_(platform_.clock),
      form_(platform_.language, session_, refresh_),
      frame_(form_, session_, platform_, windows_),
      link_(session_, platform_, form_, timers_, services.makePort, services.devices),
      log_(session_, platform_),
      openLog_(session_, platform_, log_),
      graphs_(
          session_, platform_, services.translation, form_.GraphArea(), refresh_, [this] { StoreGraphSettings(); },
          &openLog_),
      curves_(windows_, session_, platform_, graphs_, [this] { KeepSettings(); }),
      jobFiles_(session_, platform_, questions_, graphs_),
      recorder_(session_, platform_, form_, log_, jobFiles_),
      road_(session_, platform_, form_, recorder_),
      opcQuestions_(windows_),
      opc_(services.makeOpc(platform_.clock, opcQuestions_)),
      opcItems_(*opc_, platform_.clock, platform_.settings),
      sources_(session_, platform_, timers_, link_, road_, services.makePageFetch(platform_.clock), form_, opcItems_),
      playback_(session_, platform_, timers_, form_, graphs_),
      acquisition_(session_, platform_, form_, graphs_, link_, recorder_, road_, sources_, playback_),
      dataPanel_(session_, platform_, form_, recorder_, link_),
      linkSetUp_(session_, platform_, timers_, link_, sources_),
      resetValue_(session_, platform_, link_, [this] { return sources_.IsRunning(); }),
      shutDown_({session_, platform_, form_, graphs_, link_, road_, sources_, acquisition_, playback_}),
      editSettings_(windows_,
                    {session_, platform_, [this] { linkSetUp_.ResetConnection(); }, [this] { shutDown_.SaveAndEnd(); },
                     [this] { OfferNewStart(); }},
                    [this] { SettingsHaveChanged(); }),
      formulas_(windows_, session_, platform_, form_, graphs_, [this] { KeepSettings(); }),
      printGraph_(windows_, session_, platform_, printerChoice_, [this] { KeepSettings(); }),
      liveSurvey_(
          windows_, well_, platform_, timers_, [this] { return RunningLog(); }, [this] { ShowPath(); }),
      startUp_(
          {session_, platform_, services.translation, form_, frame_, link_, sources_, [this] { EditSerialPort(); }},
          ProgramFolder(services)),
      programFolder_(ProgramFolder(services)),
      devices_(services.devices) {
  windows_.SetParent(&form_);
  BindCommands();
}

Application::~Application() {
  windows_.CloseAll();
  acquisition_.onJob = nullptr;
  acquisition_.onAcquiring = nullptr;
  log_.onLeaving = nullptr;
  form_.onQueryUnload = nullptr;
  form_.onSpeedChange = nullptr;
  form_.onPlaced = nullptr;
  graphs_.UnloadAll();
}

void Application::BindCommands() {
  Commands& commands = form_.Table();
  commands.isConnecting = [this] { return acquisition_.IsConnecting(); };
  BindAcquisition(commands, acquisition_, recorder_);
  BindPlayback(commands, playback_);
  form_.onPlaced = [this](const std::string& place) { session_.MainWindowPlace = place; };
  form_.onSpeedChange = [this](int speed) { playback_.HScroll1_Change(speed); };
  BindAlarms(commands, windows_, session_);
  BindLargeValues(commands, windows_, {session_, platform_.clock, [this] { KeepSettings(); }});
  frame_.Toggles().onChartLooks = [this] { FollowChartLooks(); };
  frame_.Toggles().onStored = [this] { KeepSettings(); };
  BindSummaryReport(commands, windows_, {session_, platform_, openLog_, printerChoice_});
  FollowComments(windows_, openLog_);
  openLog_.onRowsChanged = [this] { playback_.FollowRows(); };
  editSettings_.Bind(commands);
  commands.Bind("mnuEditSerialPort", [this] { EditSerialPort(); });
  commands.Bind("mnuEditTable", [this] { EditTable(); });
  commands.Bind("mnuEditOPCServer", [this] { EditOPCServer(); });
  sources_.onChannels = [this] { KeepSettings(); };
  commands.Bind("mnuToolsCalibrate", [this] {
    mnuToolsCalibrate_Click(windows_, session_, platform_, form_, link_, timers_, [this] { KeepSettings(); });
  });
  BindUnit(commands);
  commands.Bind("mnuToolsReset", [this] { resetValue_.mnuToolsReset_Click(); });
  formulas_.Bind(commands);
  BindWells(commands);
  // Its window stops it, while recording is off, too.
  commands.AllowAlso("mnuToolsLiveSurvey", [this] { return liveSurvey_.IsOn(); });
  BindExchange(commands);
  curves_.onPrint = [this](int graph) { printGraph_.Print(graph); };
  shutDown_.Bind(commands);
  form_.Guide().portIsThere = [this] {
    return WasChosen(session_, platform_.settings) &&
           (!ProtocolOf(session_).hasPort || PortIsThere(PortDevice(platform_.settings, session_.PortNumber)));
  };
  form_.Guide().onSimulatedUnit = [this] {
    if (!StartWithSimulatedUnit(programFolder_, session_, platform_.language))
      platform_.dialogs.Message({text::NoSimulatedUnit, "", Buttons::Ok, BoxIcon::Exclamation});
  };
  acquisition_.onJob = [this](bool stands) {
    dataPanel_.FollowJob(stands);
    liveSurvey_.Stop();
  };
  acquisition_.onAcquiring = [this] { dataPanel_.FollowAcquiring(); };
  refresh_.Ahead([this] { dataPanel_.LookAlong(); });
  frame_.Windows().onReopen = [this](int graph) { ReopenGraph(graph); };
}

void Application::BindUnit(CommandBinder& commands) {
  const auto found = [this] {
    linkSetUp_.KeepFound();
    if (WaitsForNewStart(session_)) OfferNewStart();
  };
  commands.Bind("mnuEditAutoDetect", [this, found] {
    mnuEditAutoDetect_Click(
        {session_, platform_, form_, link_, timers_, [this] { return MakeFrmAutoDetect(windows_); }, found, devices_});
  });
  commands.Bind("mnuToolsOrbenHardware",
                [this] { mnuToolsOrbenHardware_Click(windows_, Unit(), [this] { form_.Beep(); }); });
  curves_.calibrationOf = [this](int parameter) -> std::function<void()> {
    if (!CanCalibrateOnBoard(session_, parameter)) return {};
    return [this, parameter] { CalibrateOnBoard(Unit(), parameter); };
  };
}

void Application::BindWells(CommandBinder& commands) {
  const auto beep = [this] { form_.Beep(); };
  const auto printer = [this]() -> PrinterChoice& { return printerChoice_; };
  commands.Bind("mnuToolsSurvey", [this, beep] {
    TakeUserUnits(well_, platform_);
    mnuToolsSurvey_Click(windows_, well_, platform_, session_.DefaultDirectory, beep,
                         [this] { return liveSurvey_.IsOn(); });
    ShowPath();
  });
  commands.Bind("mnuToolsWellProfileTable", [=, this] {
    TakeUserUnits(well_, platform_);
    windows_.Open<ReportForm>(WellAccess{well_, session_, platform_, printer, beep}).Refresh();
  });
  commands.Bind("mnuToolsLiveSurvey", [this] { liveSurvey_.mnuToolsLiveSurvey_Click(); });
  road_.onValues = [this] {
    if (const LogRow* const row = recorder_.LastRow()) liveSurvey_.Step(*row);
  };
  playback_.onRow = [this](const LogRow& row) { liveSurvey_.Step(row); };
  playback_.onEnd = [this] { liveSurvey_.Stop(); };
  acquisition_.onEnding = log_.onLeaving = [this] { liveSurvey_.Stop(); };
  shutDown_.alsoLost = [this] {
    return HasUnsavedRows(well_) ? OperatorText(text::SurveyGoesWithProgram) : OperatorText();
  };
  commands.Bind("mnuTools3DWell", [=, this] {
    TakeUserUnits(well_, platform_);
    windows_.Open<frm3DWell>(WellAccess{well_, session_, platform_, printer, beep}).Refresh();
  });
}

void Application::BindExchange(CommandBinder& commands) {
  commands.Bind("mnuFileImportCSV", [this] {
    mnuFileImportCSV_Click(windows_, {platform_, session_.DefaultDirectory, [this] { return openLog_.Path(); },
                                      [this](const std::string& path) { PrepareLog(path); }});
  });
  for (const auto& [item, mode] : {std::pair{"mnuFileExportMDBtoCSV", ExportMode::LogToCsv},
                                   {"mnuFileExportMDBtoXML", ExportMode::LogToXml},
                                   {"mnuFileExportSummary", ExportMode::SummaryToCsv}})
    commands.Bind(item, [this, mode = mode] {
      mnuFileExport_Click(windows_, {platform_, mode, LogOfSession(), session_.DefaultDirectory,
                                     [this](const std::string& path) { PrepareLog(path); }});
    });
  playback_.onChosen = [this](const std::string& path) { PrepareLog(path); };
  commands.Bind("mnuImprtLiveData", [this] { mnuImprtLiveData_Click(windows_, LiveAccess()); });
}

ImportLiveAccess Application::LiveAccess() {
  const auto store = [this](const LiveImport& live) {
    SaveToRegistory(platform_.settings, live);
    platform_.settings.Flush();
  };
  const auto keep = [this](const LiveImport& live) {
    SaveToRegistory(platform_.settings, live);
    KeepSettings();
  };
  const auto print = [this](const LiveImport& live) { printGraph_.PrintExternal(live, ToolsForJet()); };
  return {{session_, platform_, openLog_, ToolsForJet(), keep, print}, form_, store};
}

JetTools Application::ToolsForJet() const {
  const bool isCyrillic = CodePageOf(windows_.Words().Languages.Language()) == CodePage::Cyrillic;
  return {JetReaderIn(programFolder_), isCyrillic ? "CP1251" : "CP1252"};
}

void Application::PrepareLog(const std::string& path) {
  velk::PrepareLog(path, ToolsForJet(), platform_);
}

void Application::FollowChartLooks() {
  graphs_.FollowLooks();
  if (auto* external = windows_.Opened<frmExtGraphForm>()) external->FollowLooks();
}

std::string Application::LogOfSession() const {
  if (openLog_.IsOpen()) return openLog_.Path();
  return session_.LogFileInUse.empty() ? session_.CurrentFile : session_.LogFileInUse;
}

/// A log that plays is only read: what is surveyed from it goes elsewhere. One that is recorded stays the log of its
/// job while a pause keeps rows from it.
LiveLog Application::RunningLog() const {
  if (!log_.IsConnected() && !playback_.IsOpen()) return {};
  return {log_.Writing(), openLog_.Channels()};
}

/// Windows that show the well's path show it as it is now.
void Application::ShowPath() {
  if (auto* table = windows_.Opened<ReportForm>()) table->Refresh();
  if (auto* view = windows_.Opened<frm3DWell>()) view->Refresh();
}

/// No box of a page that is fetched comes over the dialog in which its address is being mended. The line driver stays
/// as it is: some units restart where their port is opened, and Cancel leaves all as it was.
void Application::EditSerialPort() {
  TimersAtRest timers(timers_);
  PortListener listener(link_, timers_);
  mnuEditSerialPort_Click(windows_, session_, platform_, &listener, [&] {
    timers.StayStill();
    linkSetUp_.SetUpAgain();
    if (WaitsForNewStart(session_)) OfferNewStart();
  });
}

/// A new gain must not meet half a job's lines, and nothing comes over the table in the meantime.
void Application::EditTable() {
  const LinkLease lease(link_, timers_);
  mnuEditTable_Click(windows_, session_, platform_, graphs_);
  curves_.UpdateToolbars();
}

/// A job's items that are connected already go on beside those of the window: below, they share the connection.
void Application::EditOPCServer() {
  velk::mnuEditOPCServer_Click(windows_, platform_, *opc_, std::max(0, kMaxParameters - session_.NumberOfFormulae),
                               [this] { sources_.FollowOpcList(); });
}

/// In the middle of the area; its page begins where those of the others do.
void Application::ReopenGraph(int graph) {
  const QRect room = form_.GraphArea().viewport()->rect();
  const QRect place = room.adjusted(room.width() / 6, room.height() / 6, -room.width() / 6, -room.height() / 6);
  graphs_.Open(graph, place, session_.AcquireStarted ? session_.Times.GraphPageTime : 0);
}

void Application::KeepSettings() {
  velk::KeepSettings({platform_.dialogs, "SaveSettings"}, session_, platform_.settings);
}

void Application::OfferNewStart() {
  if (platform_.dialogs.Message({text::OfferNewStart, "", Buttons::YesNo, BoxIcon::Question}) != Answer::Yes) return;
  // The save at the end leaves it out, and the new start would have another number of channels.
  StoreParameterCount(session_, platform_.settings);
  startsAnew_ = true;
  shutDown_.SaveAndEnd();
}

void Application::SettingsHaveChanged() {
  sources_.FollowProtocol();
  frame_.LoadCompanyLogo();
}

void Application::StoreGraphSettings() {
  if (!log_.IsConnected() || ShowsFile(session_)) return;
  RunProcedure({platform_.dialogs, "InitialHeader"}, [&](const Statements& run) {
    run([&] {
      if (log_.HoldsPresentChannels()) log_.WriteGraphSettings(true);
    });
  });
}

}  // namespace velk
