#include "shell/frm_about.h"
#include "shell/help_window.h"
#include "windows/every_window.h"
#include "windows/sample_program.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenAbout(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<frmAbout>(job, job->session, "/home/operator/.config/VELK");
}

std::shared_ptr<QWidget> OpenHelp(const std::string& language) {
  auto window = Hosted<HelpWindow>(MakeJob(language));
  static_cast<HelpWindow&>(*window).ShowTopic(topic::Formulas);
  return window;
}

const WindowsOf kShell([] {
  const auto mainForm = [](SampleProgram::State state) {
    return [=](const std::string& language) -> std::shared_ptr<QWidget> {
      const auto program = std::make_shared<SampleProgram>(language, state);
      return {program, &program->rig.Window()};
    };
  };
  using State = SampleProgram::State;
  return std::vector<ListedWindow>{
      {"frmAbout", "", topic::Files, {"lblVersion", "txtSettings", "txtLogs"}, OpenAbout},
      {"HelpWindow", "", topic::Formulas, {"lblVersion"}, OpenHelp},
      {"MainForm",
       "ready",
       topic::FirstStart,
       {"MainForm", "StatusBar1_*", "connect", "disconnect"},
       mainForm(State::Ready)},
      {"MainForm",
       "recording",
       topic::FirstStart,
       {"MainForm", "StatusBar1_*", "connect", "disconnect"},
       mainForm(State::Recording)},
      {"MainForm",
       "looking back",
       topic::FirstStart,
       {"MainForm", "StatusBar1_*", "connect", "disconnect"},
       mainForm(State::LookingBack)},
      {"MainForm",
       "playing",
       topic::FirstStart,
       {"MainForm", "StatusBar1_*", "lblSpeed", "connect", "disconnect"},
       mainForm(State::PlayingBack)},
  };
});

}  // namespace
}  // namespace velk::test
