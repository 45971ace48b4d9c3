#include "shell/application.h"

#include <QCoreApplication>
#include <QDir>
#include <utility>

#include "base/text_qt.h"
#include "core/windows/alarms_window.h"
#include "formula/remove_additional.h"
#include "i18n/windows/toolkit_texts.h"
#include "i18n/windows/translate_form.h"
#include "instruments/link/link_lease.h"
#include "instruments/setup/edit_serial_port.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/texts.h"
#include "settings/edit_settings.h"
#include "settings/settings_io.h"
#include "shell/texts.h"

namespace velk {

namespace {

constexpr int kCloseAgainMs = 20;

}  // namespace

Application::Application(const Services& services)
    : platform_(services.platform),
      programFolder_(services.programFolder.empty() ? FromQt(QCoreApplication::applicationDirPath())
                                                    : services.programFolder),
      timers_(platform_.clock),
      translation_(services.translation),
      form_(platform_.language),
      frame_(form_, session_, platform_, translation_),
      link_(session_, platform_, form_, timers_, services.makePort),
      graphs_(session_, platform_, translation_, form_.GraphArea(), [this] { StoreGraphSettings(); }),
      jobFiles_(session_, platform_, services.questions, graphs_),
      log_(session_, platform_),
      recorder_(session_, platform_, form_, log_, jobFiles_),
      road_(session_, platform_, form_, recorder_),
      sources_(session_, platform_, timers_, link_, road_, services.makePageFetch(platform_.clock)),
      acquisition_(session_, platform_, form_, graphs_, link_, recorder_, road_, sources_),
      formulaWindows_(session_, platform_, form_, graphs_, translation_),
      alarmWindows_(platform_.dialogs),
      settingsQuestions_(services.settingsQuestions),
      protocolDialogs_(services.protocolDialogs),
      closeAgain_(platform_.clock.MakeTimer()) {
  form_.onQueryUnload = [this] { return MDIForm_QueryUnload(); };
  closeAgain_->SetInterval(kCloseAgainMs);
  closeAgain_->SetHandler([this] {
    closeAgain_->SetEnabled(false);
    form_.close();
  });
  BindMenus();
  BindToolbar();
}

Application::~Application() {
  form_.onQueryUnload = nullptr;
  graphs_.UnloadAll();
}

// --- Menus and toolbar ---

void Application::UnlessConnecting(const std::function<void()>& procedure) {
  if (!acquisition_.IsConnecting()) procedure();
}

void Application::BindMenuItem(const char* item, std::function<void()> procedure) {
  QObject::connect(form_.MenuItem(item), &QAction::triggered, &form_,
                   [this, work = std::move(procedure)] { UnlessConnecting(work); });
}

void Application::BindMenus() {
  BindMenuItem("mnuFileRecord", [this] { recorder_.mnuFileRecord_Click(); });
  BindMenuItem("mnuFileExit", [this] { mnuFileExit_Click(); });
  BindMenuItem("mnuAcquireStart", [this] { acquisition_.mnuAcquireStart_Click(); });
  QObject::connect(form_.MenuItem("mnuAcquireConnect"), &QAction::triggered, &form_,
                   [this] { acquisition_.mnuAcquireConnect_Click(); });
  QObject::connect(form_.MenuItem("mnuAcquireStop"), &QAction::triggered, &form_,
                   [this] { acquisition_.mnuAcquireStop_Click(); });
  BindEditMenu();
  BindToolsMenu();
}

void Application::BindEditMenu() {
  const auto bind = [this](const char* item, void (*procedure)(const EditSettings&)) {
    BindMenuItem(item, [this, procedure] {
      procedure({session_, platform_, settingsQuestions_, [this] { ResetConnection(); }, [this] { SaveAndEnd(); }});
      sources_.FollowProtocol();
      frame_.LoadCompanyLogo();  // a template, or cleared settings, may name another one
    });
  };
  bind("mnuEditSaveTemplate", mnuEditSaveTemplate_Click);
  bind("mnuEditLoadTemplate", mnuEditLoadTemplate_Click);
  bind("mnuEditDeleteTemplate", mnuEditDeleteTemplate_Click);
  bind("mnuEditClear", mnuEditClear_Click);
  BindMenuItem("mnuEditSerialPort", [this] { mnuEditSerialPort_Click(); });
  bind("mnuEditUserOptions", mnuEditUserOptions_Click);
  bind("mnuEditLanguage", mnuEditLanguage_Click);
}

void Application::mnuEditSerialPort_Click() {
  velk::mnuEditSerialPort_Click(session_, platform_, protocolDialogs_, [this] { SetUpLinkAgain(); });
}

void Application::SetUpLinkAgain() {
  {
    LinkLease lease(link_, timers_);
    lease.SetUpAnew();
    // The chosen protocol gets its link all the same: Cancel leaves the save only.
    RunProcedure({platform_.dialogs, "mnuEditSerialPort_Click"},
                 [&](const Statements& run) { run([&] { SaveSettings(session_, platform_.settings); }); });
  }
  sources_.FollowProtocol();
}

void Application::BindToolsMenu() {
  formulaWindows_.SetParent(&form_);
  BindMenuItem("mnuToolsDefine", [this] { formulaWindows_.mnuToolsDefine_Click(); });
  BindMenuItem("mnuToolsInclude", [this] { formulaWindows_.mnuToolsInclude_Click(); });
  BindMenuItem("mnuToolsRemove", [this] {
    mnuToolsRemove_Click(
        session_, platform_.dialogs, graphs_,
        [this](const OperatorText& title, const OperatorText& prompt, const std::vector<std::string>& entries) {
          return settingsQuestions_.Choose({title, prompt, entries, false, topic::Formulas});
        });
  });
}

void Application::BindToolbar() {
  const auto press = [this](const char* key, const char* menuItem) {
    QObject::connect(form_.Button(key), &QAction::triggered, form_.MenuItem(menuItem), &QAction::trigger);
  };
  press("Record", "mnuFileRecord");
  press("Exit", "mnuFileExit");
  const auto bind = [this](const char* key, std::function<void()> procedure) {
    QObject::connect(form_.Button(key), &QAction::triggered, &form_, std::move(procedure));
  };
  // Not through the menu items: those may be disabled where the button tells why it can't be.
  bind("Acquire", [this] { acquisition_.mnuAcquireConnect_Click(); });
  bind("Pause", [this] { UnlessConnecting([this] { acquisition_.mnuAcquireStart_Click(); }); });
  bind("Stop", [this] { acquisition_.mnuAcquireStop_Click(); });
  for (const char* key : {"Alarms", "Command1"})
    bind(key, [this] { Command1_Click(session_, translation_, alarmWindows_, &form_); });
  bind("RecordToDB", [this] { UnlessConnecting([this] { acquisition_.RecordToDB_Click(); }); });
}

void Application::StoreGraphSettings() {
  if (!log_.IsConnected()) return;
  RunProcedure({platform_.dialogs, "InitialHeader"}, [&](const Statements& run) {
    run([&] {
      if (log_.HoldsPresentChannels()) log_.WriteGraphSettings(true);
    });
  });
}

// --- Start-up ---

void Application::MDIForm_Load() {
  // The numbers are those that the start-up box shows: who phones in reads them out.
  StartUpStep(1, [this] {
    session_.Current_language = platform_.settings.Get("VELK2", "General", "Current_language", "English");
  });
  StartUpStep(2, [this] {
    session_.DirectoryAtStart = FromQt(QDir::currentPath());
    if (session_.DirectoryAtStart != programFolder_) QDir::setCurrent(ToQt(programFolder_));
  });
  StartUpStep(3, [this] { LoadLanguage(); });
  StartUpStep(4, [this] { form_.ResetCaption(); });
  ReadSettings();
  StartUpStep(7, [this] { SetProtocolConstants(session_); });
  ResetFlags();
  StartUpStep(9, [this] { frame_.LoadCompanyLogo(); });
  StartUpStep(10, [this] { ChangeCurrentStatus(session_, form_, text::StatusReady); });
  StartUpStep(11, [this] {
    HideAcquireTimeButtons();
    form_.ResetCaption();
  });
  form_.show();
  // The window stands there before a slow port is opened or a question covers it.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  StartUpStep(12, [this] { OpenLink(); });
  StartUpStep(13, [this] { sources_.FollowProtocol(); });
}

void Application::LoadLanguage() {
  const std::string inEffect = translation_.Load(programFolder_, session_.Current_language);
  toolkitTexts_ = InstallToolkitTexts(inEffect);
  TranslateForm(form_, translation_);
}

void Application::StartUpStep(int number, const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& error) {
    ShowStartUpError(TextOf(error), number);
  }
}

void Application::ShowStartUpError(const OperatorText& text, int step) {
  platform_.dialogs.Message({text + "\n\n" + text::StartUpErrorLine + std::to_string(step), text::StartUpErrorTitle,
                             Buttons::Ok, BoxIcon::Exclamation});
}

void Application::ReadSettings() {
  constexpr int kStep = 5;
  StartUpStep(kStep, [this] {
    const OperatorText told = ProblemText(LoadSettings(session_, platform_.settings, platform_.language));
    if (!told.IsEmpty()) ShowStartUpError(told, kStep);
  });
}

void Application::ResetFlags() {
  session_.RecordToDB = false;
  session_.SampleBusy = false;
  session_.SampleSkips = 0;
  session_.FirstPoint = true;
  session_.AskOnExit = true;
}

void Application::HideAcquireTimeButtons() {
  for (const char* button : {"Pause", "Stop", "RecordToDB", "Alarms", "ScrollBar"})
    form_.SetButtonVisible(button, false);
}

void Application::OpenLink() {
  const bool goesOn =
      !ProtocolOf(session_).asksAtStart ||
      platform_.dialogs.Message({text::ContinueWithPort, "", Buttons::YesNo, BoxIcon::Question}) == Answer::Yes;
  if (goesOn)
    link_.SetODataCom();
  else
    mnuEditSerialPort_Click();
}

// --- Shut-down ---

bool Application::IsSureToExit() {
  return platform_.dialogs.Message({text::SureToExit, text::ProgramName, Buttons::YesNo, BoxIcon::Question}) ==
         Answer::Yes;
}

void Application::mnuFileExit_Click() {
  RunProcedure({platform_.dialogs, "mnuFileExit_Click"}, [&](const Statements& run) {
    if (!IsSureToExit()) return;
    // First of all: who cancels a save that fails keeps the program as it is. The window's frame is the way out.
    run([&] { SaveSettings(session_, platform_.settings); });
    settingsSaved_ = true;
    session_.AskOnExit = false;
    form_.close();
  });
}

bool Application::MDIForm_QueryUnload() {
  if (session_.AskOnExit && !IsSureToExit()) return false;
  session_.AskOnExit = false;
  SaveAtEnd();
  sources_.ShutDown();
  if (road_.IsRunning() || sources_.IsRunning() || acquisition_.IsConnecting()) {
    // What runs is on the stack below this close: it has to leave first.
    if (!StatusIs(session_, text::StatusReady)) acquisition_.mnuAcquireStop_Click();
    platform_.dialogs.SetEnding();
    closeAgain_->SetEnabled(true);
    return false;
  }
  EndJob();
  session_.ProgramEnding = true;
  graphs_.UnloadAll();
  MDIForm_Unload();
  return true;
}

void Application::SaveAtEnd() {
  if (std::exchange(settingsSaved_, true)) return;
  RunProcedure({platform_.dialogs, "MDIForm_QueryUnload"},
               [&](const Statements& run) { run([&] { SaveSettings(session_, platform_.settings); }); });
}

void Application::EndJob() {
  if (std::exchange(jobEnded_, true)) return;
  if (!StatusIs(session_, text::StatusReady)) acquisition_.mnuAcquireStop_Click();
  if (ProtocolOf(session_).hasPort) link_.CloseODataCom();
}

void Application::SaveAndEnd() {
  session_.AskOnExit = false;
  form_.close();
}

/// As at start-up, for port settings that have changed; nothing is asked.
void Application::ResetConnection() {
  LinkLease(link_, timers_).SetUpAnew();
}

void Application::MDIForm_Unload() {
  link_.Board.CloseComPort();
  QDir::setCurrent(ToQt(session_.DirectoryAtStart));
}

}  // namespace velk
