#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/settings/settings.h"
#include "shell/application.h"
#include "support/fake_clock.h"
#include "support/fake_opc.h"
#include "support/fake_serial_port.h"
#include "support/scripted_dialogs.h"
#include "support/scripted_job_questions.h"
#include "support/scripted_pages.h"
#include "support/temporary_folder.h"
#include "support/window_script.h"

namespace velk::test {

/// The whole program with its real main window, on a clock, ports and boxes of the test's.
class ShellRig {
 public:
  /// A store that is set for a KESTA version 3 of three channels, so that start-up asks nothing.
  ShellRig();

  /// Builds the application and starts it up; a second call is a restart.
  void Start();
  MainForm& Window() { return application->Window(); }
  Session& State() { return application->State(); }

  void Press(const char* button) { Window().Button(button)->trigger(); }
  void Choose(const char* menuItem) { Window().MenuItem(menuItem)->trigger(); }
  /// Clears groups of the settings, from 0 on, by the menu.
  void ClearSettings(std::initializer_list<int> groups);
  /// Connect, with the unit's first line coming in while it waits.
  void Connect() {
    OnConnect([this] { Press("Acquire"); });
  }
  /// The same by another way to press it.
  void OnConnect(const std::function<void()>& press);
  /// A frame of the unit comes in a second after the last one.
  void Frame(double a, double b, double c);
  /// Connect, then a job of five rows (i, 2 i, 3 i) in that file, and Stop.
  void RecordFiveRows(const std::string& file);

  TemporaryFolder folder;
  Gate gate;
  FakeClock clock{gate};
  Translation translation;
  ScriptedDialogs dialogs{gate, translation.Translator};
  ScriptedJobQuestions questions;
  WindowScript windows;  ///< the real ones
  std::unique_ptr<SettingsStore> settings;
  FakeDevice plainPort, linePort;
  ScriptedPages* pages = nullptr;  ///< of the application that runs
  FakeOpc* opc = nullptr;          ///< likewise
  std::string programFolder;       ///< empty: that of the test program, where no translation files are
  bool staysOnItsScreen = false;   ///< the main window is not given a desktop's size after its start
  std::unique_ptr<Application> application;

 private:
  void Receive(double a, double b, double c);
};

}  // namespace velk::test
