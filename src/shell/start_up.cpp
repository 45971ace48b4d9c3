#include "shell/start_up.h"

#include <QCoreApplication>
#include <QDir>

#include "base/text_qt.h"
#include "i18n/windows/toolkit_texts.h"
#include "i18n/windows/translate_form.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/dialogs/dialogs.h"
#include "platform/ports/port_devices.h"
#include "platform/settings/settings.h"
#include "settings/settings_io.h"
#include "settings/templates.h"
#include "shell/texts.h"

namespace velk {

void StartUp::Run() {
  Session& session = parts_.session;
  // The numbers are those that the start-up box shows: who phones in reads them out.
  Step(1, [&] {
    session.Current_language = parts_.platform.settings.Get("VELK2", "General", "Current_language", "English");
  });
  Step(2, [&] {
    session.DirectoryAtStart = FromQt(QDir::currentPath());
    if (session.DirectoryAtStart != programFolder_) QDir::setCurrent(ToQt(programFolder_));
  });
  Step(3, [this] { LoadLanguage(); });
  Step(4, [this] { parts_.form.ResetCaption(); });
  ReadSettings();
  Step(6, [this] { parts_.sources.ConnectOPCItems(); });
  Step(7, [&] { SetProtocolConstants(session); });
  ResetFlags();
  Step(9, [this] { parts_.frame.LoadCompanyLogo(); });
  Step(10, [&] { ChangeCurrentStatus(session, parts_.form, text::StatusReady); });
  Step(11, [this] {
    HideAcquireTimeButtons();
    parts_.form.ResetCaption();
  });
  parts_.form.PlaceOnScreen(session.MainWindowPlace);
  parts_.form.show();
  // The window stands there before a slow port is opened or a question covers it.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  Step(12, [this] { OpenLink(); });
  Step(13, [this] { parts_.sources.FollowProtocol(); });
}

void StartUp::Step(int number, const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& error) {
    ShowError(TextOf(error), number);
  }
}

void StartUp::ShowError(const OperatorText& text, int step) {
  parts_.platform.dialogs.Message({text + "\n\n" + text::StartUpErrorLine + std::to_string(step),
                                   text::StartUpErrorTitle, Buttons::Ok, BoxIcon::Exclamation});
}

void StartUp::LoadLanguage() {
  const std::string inEffect = parts_.translation.Load(programFolder_, parts_.session.Current_language);
  toolkitTexts_ = InstallToolkitTexts(inEffect);
  TranslateForm(parts_.form, parts_.translation);
}

void StartUp::ReadSettings() {
  constexpr int kStep = 5;
  Step(kStep, [this] {
    const OperatorText told =
        ProblemText(LoadSettings(parts_.session, parts_.platform.settings, parts_.platform.language));
    if (!told.IsEmpty()) ShowError(told, kStep);
    AddReadyMadeTemplates(parts_.session, parts_.platform.settings, parts_.platform.language);
  });
}

void StartUp::ResetFlags() {
  Session& session = parts_.session;
  session.RecordToDB = false;
  session.SampleBusy = false;
  session.SampleSkips = 0;
  session.FirstPoint = true;
  session.AskOnExit = true;
}

void StartUp::HideAcquireTimeButtons() {
  for (const char* button : {"Pause", "Stop", "RecordToDB", "Alarms", "ScrollBar"})
    parts_.form.SetButtonVisible(button, false);
}

OperatorText StartUp::PresentPort() const {
  const Session& session = parts_.session;
  OperatorText present = text::PresentProtocol + ProtocolOf(session).caption;
  present += "\n" + (text::PresentDevice + PortDevice(parts_.platform.settings, session.PortNumber));
  present += "\n" + (text::PresentSpeed + std::to_string(session.BaudRate));
  return present + "\n" + text::PresentChannels + std::to_string(session.NumberOfParameters);
}

void StartUp::OpenLink() {
  const bool goesOn = !ProtocolOf(parts_.session).asksAtStart ||
                      parts_.platform.dialogs.Message({text::ContinueWithPort + "\n\n" + PresentPort(), "",
                                                       Buttons::YesNo, BoxIcon::Question}) == Answer::Yes;
  if (goesOn)
    parts_.link.SetODataCom();
  else
    parts_.editSerialPort();
}

}  // namespace velk
