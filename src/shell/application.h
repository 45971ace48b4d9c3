#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/acquisition.h"
#include "core/panel/data_panel.h"
#include "core/sources/sample_sources.h"
#include "formula/windows/formula_commands.h"
#include "graphs/windows/curve_desk.h"
#include "graphs/windows/graph_windows_mdi.h"
#include "graphs/windows/import_live_command.h"
#include "i18n/translation.h"
#include "i18n/windows/window_host.h"
#include "instruments/calibration/reset_value.h"
#include "instruments/link/link.h"
#include "instruments/unit/unit_talk.h"
#include "log/job_files.h"
#include "log/log_writer.h"
#include "log/open_log.h"
#include "log/windows/job_questions_qt.h"
#include "model/main_timers.h"
#include "opc/velk_opc_module.h"
#include "opc/windows/opc_questions_qt.h"
#include "paper/windows/print_graph_command.h"
#include "platform/opc/ua/ua_transport.h"
#include "platform/ports/serial.h"
#include "platform/windows/qt_printers.h"
#include "platform/windows/screen_refresh.h"
#include "settings/windows/edit_settings_commands.h"
#include "shell/frame.h"
#include "shell/link_set_up.h"
#include "shell/main_form.h"
#include "shell/shut_down.h"
#include "shell/start_up.h"
#include "wells/well.h"
#include "wells/windows/live_survey_command.h"

namespace velk {

/// What the program is handed by main(), by the demo or by a test.
struct Services {
  Platform platform;
  Translation& translation;  ///< what platform.language reads; loaded at start-up
  SerialPortFactory makePort;
  JobQuestions* questions = nullptr;  ///< null: the operator is asked by windows
  std::function<std::unique_ptr<PageFetch>(Clock&)> makePageFetch = MakePageFetch;
  std::function<std::unique_ptr<OpcTransport>(Clock&, OpcQuestions&)> makeOpc = [](Clock& clock, OpcQuestions& asked) {
    return MakeUaTransport(clock, &asked);
  };
  /// Where the program's own files are; beside the executable where it is empty.
  std::string programFolder = {};
  std::string devices = "/dev";  ///< where serial devices are looked for
};

/// The composition root: builds everything in order, lets each room bind its commands, and takes it all down in
/// reverse.
class Application {
 public:
  explicit Application(const Services& services);
  ~Application();

  /// Start-up in its order; shows the window.
  void MDIForm_Load() { startUp_.Run(); }

  MainForm& Window() { return form_; }
  Session& State() { return session_; }
  /// The operator wants the program to start anew once it has ended.
  bool StartsAnew() const { return startsAnew_; }
  long long RowsRecorded() const { return recorder_.RowsRecorded(); }
  /// The log that is open, with its report.
  OpenLog& Log() { return openLog_; }

 private:
  void BindCommands();
  void BindUnit(CommandBinder& commands);
  void BindWells(CommandBinder& commands);
  void BindExchange(CommandBinder& commands);
  /// What reads files of the Jet format, for the operator's language.
  JetTools ToolsForJet() const;
  /// What following another program's database works with.
  ImportLiveAccess LiveAccess();
  /// The log that is open, or else the one that was recorded to last.
  std::string LogOfSession() const;
  /// Ahead of the opening of a log that was chosen to be read.
  void PrepareLog(const std::string& path);
  void ShowPath();
  UnitAccess Unit() { return {session_, platform_, link_, timers_}; }
  LiveLog RunningLog() const;
  void EditSerialPort();
  void EditTable();
  void FollowChartLooks();
  void EditOPCServer();
  /// A change is on the disk at once: a power cut before the exit would take it.
  void KeepSettings();
  void ReopenGraph(int graph);
  void OfferNewStart();
  /// Whatever shows a setting shows it anew.
  void SettingsHaveChanged();
  /// A graph's header was drawn anew: the open log takes over what it shows.
  void StoreGraphSettings();

  Session session_;
  Platform platform_;
  MainTimers timers_;
  WindowHost windows_;
  JobQuestionsQt jobWindows_;
  JobQuestions& questions_;
  ScreenRefresh refresh_;
  MainForm form_;
  Frame frame_;
  Link link_;
  LogWriter log_;
  OpenLog openLog_;
  GraphWindowsMdi graphs_;
  CurveDesk curves_;
  JobFiles jobFiles_;
  Recorder recorder_;
  SampleRoad road_;
  OpcQuestionsQt opcQuestions_;
  std::unique_ptr<OpcTransport> opc_;
  VELKOPCModule opcItems_;
  SampleSources sources_;
  Playback playback_;
  Acquisition acquisition_;
  DataPanel dataPanel_;
  LinkSetUp linkSetUp_;
  ResetValue resetValue_;
  ShutDown shutDown_;
  EditSettingsCommands editSettings_;
  FormulaCommands formulas_;
  QtPrinters printers_;
  PrinterChoice printerChoice_{printers_};
  PrintGraph printGraph_;
  Well well_;
  LiveSurveyCommand liveSurvey_;
  StartUp startUp_;
  const std::string programFolder_;
  const std::string devices_;
  bool startsAnew_ = false;
};

}  // namespace velk
