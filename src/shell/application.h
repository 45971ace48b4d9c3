#pragma once

#include <QTranslator>
#include <functional>
#include <memory>
#include <string>

#include "core/acquisition.h"
#include "formula/windows/formula_windows.h"
#include "graphs/windows/graph_windows_mdi.h"
#include "i18n/translation.h"
#include "instruments/link/link.h"
#include "instruments/setup/protocol_dialogs.h"
#include "log/job_files.h"
#include "log/job_questions.h"
#include "log/log_writer.h"
#include "model/main_timers.h"
#include "platform/ports/serial.h"
#include "platform/windows/modal_windows.h"
#include "settings/settings_questions.h"
#include "shell/frame.h"
#include "shell/main_form.h"

namespace velk {

/// What the program is handed by main(), by the demo or by a test.
struct Services {
  Platform platform;
  Translation& translation;  ///< what platform.language reads; loaded at start-up
  JobQuestions& questions;
  SettingsQuestions& settingsQuestions;
  ProtocolDialogs& protocolDialogs;
  SerialPortFactory makePort;
  std::function<std::unique_ptr<PageFetch>(Clock&)> makePageFetch = MakePageFetch;
  /// Where the program's own files are; beside the executable where it is empty.
  std::string programFolder = {};
};

/// The composition root: builds everything in order, binds menus, buttons and timers to their event procedures, and
/// takes it down in reverse.
class Application {
 public:
  explicit Application(const Services& services);
  ~Application();

  /// Start-up in its order; shows the window. `askAboutPort` is where the operator may be asked about the port
  /// settings.
  void MDIForm_Load();

  MainForm& Window() { return form_; }
  Session& State() { return session_; }
  long long RowsRecorded() const { return recorder_.RowsRecorded(); }

 private:
  void BindMenus();
  void BindToolbar();
  void BindEditMenu();
  void BindToolsMenu();
  void BindMenuItem(const char* item, std::function<void()> procedure);
  /// Nothing but Stop works while Connect is under way.
  void UnlessConnecting(const std::function<void()>& procedure);

  /// A graph's header was drawn anew: the open log takes over what it shows.
  void StoreGraphSettings();

  void StartUpStep(int number, const std::function<void()>& work);
  void LoadLanguage();
  void ReadSettings();
  void ResetFlags();
  void HideAcquireTimeButtons();
  void OpenLink();

  void mnuFileExit_Click();
  bool MDIForm_QueryUnload();
  void MDIForm_Unload();
  bool IsSureToExit();
  /// Saves the settings while boxes can still tell that they could not be saved; once.
  void SaveAtEnd();
  /// Stop's work for a job that still runs, then the link.
  void EndJob();
  /// The usual exit without its question, for changes that need a new start.
  void SaveAndEnd();
  void ResetConnection();
  void mnuEditSerialPort_Click();
  /// Behind the dialogs of the serial port: everything closed, saved, and set up for the new choice.
  void SetUpLinkAgain();
  void ShowStartUpError(const OperatorText& text, int step);

  Session session_;
  Platform platform_;
  const std::string programFolder_;
  std::unique_ptr<QTranslator> toolkitTexts_;
  MainTimers timers_;
  Translation& translation_;
  MainForm form_;
  Frame frame_;
  Link link_;
  GraphWindowsMdi graphs_;
  JobFiles jobFiles_;
  LogWriter log_;
  Recorder recorder_;
  SampleRoad road_;
  SampleSources sources_;
  Acquisition acquisition_;
  FormulaWindows formulaWindows_;
  ModalWindows alarmWindows_;
  SettingsQuestions& settingsQuestions_;
  ProtocolDialogs& protocolDialogs_;
  std::unique_ptr<Timer> closeAgain_;  ///< while something still runs at exit
  bool settingsSaved_ = false;
  bool jobEnded_ = false;
};

}  // namespace velk
