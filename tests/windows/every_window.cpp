#include "windows/every_window.h"

#include "core/windows/alarms_window.h"
#include "formula/include_in_graphs.h"
#include "formula/texts.h"
#include "formula/windows/computed_parameters.h"
#include "formula/windows/eq_editor.h"
#include "formula/windows/frm_inc_params.h"
#include "instruments/windows/formatted_data.h"
#include "instruments/windows/frm_hpt_honeywell_ez_trend.h"
#include "instruments/windows/hardware_settings.h"
#include "instruments/windows/intermittent.h"
#include "instruments/windows/requested_data.h"
#include "log/windows/frm_file_exist.h"
#include "log/windows/frm_inc_param_in_sum.h"
#include "model/help_topics.h"
#include "settings/texts.h"
#include "settings/windows/clear_settings.h"
#include "settings/windows/frm_user_options.h"
#include "settings/windows/list_input_box.h"
#include "shell/frm_about.h"
#include "shell/help_window.h"
#include "windows/sample_job.h"
#include "windows/sample_program.h"

namespace velk::test {

namespace {

using Job = std::shared_ptr<SampleJob>;

/// A window together with the job that it looks at, which outlives it.
template <class Window>
struct Held {
  Job job;
  Window window;
};

template <class Window, class... Values>
std::shared_ptr<QWidget> On(const Job& job, Values&&... values) {
  const std::shared_ptr<Held<Window>> held(new Held<Window>{job, Window(std::forward<Values>(values)...)});
  return {held, &held->window};
}

Job MakeJob(const std::string& language) {
  return std::make_shared<SampleJob>(language);
}

// --- core and formula ---

std::shared_ptr<QWidget> OpenAlarms(const std::string& language) {
  const Job job = MakeJob(language);
  return On<Alarms>(job, job->session, job->translation);
}

std::shared_ptr<QWidget> OpenCalculator(const std::string& language) {
  const Job job = MakeJob(language);
  return On<EqEditor>(job, job->session, FormulaReport{job->dialogs, job->platform.language, [] {}}, job->graphs,
                      job->translation);
}

std::shared_ptr<QWidget> OpenComputedParameters(const std::string& language) {
  const Job job = MakeJob(language);
  return On<ComputedParameters>(job, job->translation, ComputedChannels(job->session), [](QWidget*) {});
}

std::shared_ptr<QWidget> OpenParameterList(const std::string& language) {
  const Job job = MakeJob(language);
  return On<frmIncParams>(job, job->session, job->translation);
}

// --- instruments ---

std::shared_ptr<QWidget> OpenHardwareSettings(const std::string& language, const char* protocol) {
  const Job job = MakeJob(language);
  const HardwareQuestion question{
      {.SerialData = protocol, .NumberOfParameters = 5, .SamplingRate = 300.0 / 86400, .PortNumber = 3},
      2,
      {{1, "/dev/ttyS0", true},
       {2, "/dev/ttyS1", false},
       {3, "/dev/serial/by-id/usb-Prolific_Technology_Inc._USB-Serial_Controller_D-if00-port0", true},
       {4, "/dev/ttyUSB1", false}}};
  return On<HardwareSettings>(job, question, job->dialogs, job->translation);
}

template <class Window>
std::shared_ptr<QWidget> OpenSeparators(const std::string& language) {
  const Job job = MakeJob(language);
  return On<Window>(job, Separators{"|", "\r\n"}, job->dialogs, job->translation);
}

std::shared_ptr<QWidget> OpenRequestedData(const std::string& language) {
  const Job job = MakeJob(language);
  return On<RequestedData>(job, CommandsOf(job->session.Parameters, job->session.NumberOfParameters), job->translation);
}

std::shared_ptr<QWidget> OpenEthernet(const std::string& language) {
  const Job job = MakeJob(language);
  return On<frmHPTHoneywellEZtrend>(job, UnitAddress{"192.168.0.100", "pens.htm"}, job->translation);
}

// --- store ---

std::shared_ptr<QWidget> OpenFileExist(const std::string& language, bool compatible, bool sameOrder) {
  const Job job = MakeJob(language);
  const std::string file =
      job->session.DefaultDirectory + job->Pick("/Well 1042 fracturing.mdb", "/Скважина 1042 гидроразрыв пласта.mdb");
  return On<frmFileExist>(job, job->translation, file, compatible, sameOrder);
}

std::shared_ptr<QWidget> OpenSummaryQuestion(const std::string& language, int channels) {
  const Job job = MakeJob(language);
  SummaryInclusion inclusion;
  for (int i = 1; i <= channels; ++i)
    inclusion.parameters.push_back(
        {i, job->Pick("Pump Pressure No. ", "Давление на входе насоса № ") + std::to_string(i), i % 3 != 0});
  return On<frmIncParamInSum>(job, job->translation, inclusion);
}

std::shared_ptr<QWidget> OpenListBox(const std::string& language, const MessageText& title, const MessageText& prompt,
                                     bool mayEnter, int topic) {
  const Job job = MakeJob(language);
  return On<ListInputBox>(
      job, job->translation,
      ListQuestion{title,
                   prompt,
                   {"Job 7", job->Pick("Fracturing, well 1042", "Гидроразрыв пласта, скважина 1042")},
                   mayEnter,
                   topic});
}

std::shared_ptr<QWidget> OpenLanguageQuestion(const std::string& language) {
  const Job job = MakeJob(language);
  return On<ListInputBox>(job, job->translation,
                          ListQuestion{.title = text::SelectLanguage,
                                       .prompt = "",
                                       .entries = {"English", "Russian"},
                                       .helpTopic = topic::Languages});
}

std::shared_ptr<QWidget> OpenClearSettings(const std::string& language) {
  const Job job = MakeJob(language);
  return On<ClearSettings>(job, job->translation);
}

std::shared_ptr<QWidget> OpenUserOptions(const std::string& language) {
  const Job job = MakeJob(language);
  return On<frmUserOptions>(job, job->translation, UserOptionTexts{"120", "15", "3600", "10", "64"},
                            [](const UserOptionTexts&) { return true; });
}

// --- graphs and shell ---

std::shared_ptr<QWidget> OpenGraph(const std::string& language, QSize size) {
  const Job job = MakeJob(language);
  QWidget& graph = job->OpenGraph(size);
  return {job, &graph};
}

std::shared_ptr<QWidget> OpenAbout(const std::string& language) {
  const Job job = MakeJob(language);
  return On<frmAbout>(job, job->session, job->translation, "/home/operator/.config/VELK", nullptr);
}

std::shared_ptr<QWidget> OpenHelp(const std::string& language) {
  const Job job = MakeJob(language);
  auto window = On<HelpWindow>(job, job->translation);
  static_cast<HelpWindow&>(*window).Open(topic::Formulas);
  return window;
}

std::shared_ptr<QWidget> OpenMainForm(const std::string& language, SampleProgram::State state) {
  const auto program = std::make_shared<SampleProgram>(language, state);
  return {program, &program->rig.Window()};
}

// --- What stays as it is ---

const std::set<std::string> kKeypad = {"cmdOperator_4", "cmdFunction_*"};
const std::set<std::string> kSeparatorWindow = {"optTerminator_*", "lblTyped"};

}  // namespace

const std::vector<ListedWindow>& EveryWindow() {
  using State = SampleProgram::State;
  const auto file = [](bool compatible, bool sameOrder) {
    return [=](const std::string& language) { return OpenFileExist(language, compatible, sameOrder); };
  };
  const auto summary = [](int channels) {
    return [=](const std::string& language) { return OpenSummaryQuestion(language, channels); };
  };
  const auto list = [](const MessageText& title, const MessageText& prompt, bool mayEnter, int topic) {
    return [=](const std::string& language) { return OpenListBox(language, title, prompt, mayEnter, topic); };
  };
  const auto hardware = [](const char* protocol) {
    return [=](const std::string& language) { return OpenHardwareSettings(language, protocol); };
  };
  const auto graph = [](QSize size) { return [=](const std::string& language) { return OpenGraph(language, size); }; };
  const auto mainForm = [](State state) {
    return [=](const std::string& language) { return OpenMainForm(language, state); };
  };
  static const std::vector<ListedWindow> windows = {
      {"Alarms", "", topic::Alarms, {"Label1_*"}, OpenAlarms},
      {"EqEditor", "", topic::Formulas, kKeypad, OpenCalculator},
      {"ComputedParameters", "", topic::Formulas, {"Check1_*"}, OpenComputedParameters},
      {"frmIncParams", "", topic::Formulas, {}, OpenParameterList},
      {"HardwareSettings", "", topic::Connecting, {"lblDevice_*"}, hardware("Data Taker a")},
      {"HardwareSettings", "own-unit", topic::Connecting, {"lblDevice_*"}, hardware("KESTA version 3")},
      {"FormattedData", "", topic::Instruments, kSeparatorWindow, OpenSeparators<FormattedData>},
      {"Intermittent", "", topic::Instruments, kSeparatorWindow, OpenSeparators<Intermittent>},
      {"RequestedData", "", topic::Instruments, {"lblName_*", "chkCommand*", "chkReset*"}, OpenRequestedData},
      {"frmHPTHoneywellEZtrend", "", topic::Instruments, {}, OpenEthernet},
      {"frmFileExist", "", topic::Recording, {"lblFile", "lblNote"}, file(true, true)},
      {"frmFileExist", "other-order", topic::Recording, {"lblFile", "lblNote"}, file(true, false)},
      {"frmFileExist", "not-compatible", topic::Recording, {"lblFile", "lblNote"}, file(false, false)},
      {"frmIncParamInSum", "", topic::Recording, {"chk_*"}, summary(18)},
      {"frmIncParamInSum", "one", topic::Recording, {"chk_*"}, summary(1)},
      {"frmIncParamInSum", "64", topic::Recording, {"chk_*"}, summary(64)},
      {"ListInputBox",
       "save",
       topic::Templates,
       {},
       list(text::SaveTemplateTitle, text::SaveTemplatePrompt, true, topic::Templates)},
      {"ListInputBox",
       "load",
       topic::Templates,
       {},
       list(text::LoadTemplateTitle, text::LoadTemplatePrompt, false, topic::Templates)},
      {"ListInputBox",
       "remove",
       topic::Formulas,
       {},
       list(text::RemoveAdditionalTitle, text::RemoveAdditionalPrompt, false, topic::Formulas)},
      {"ListInputBox", "language", topic::Languages, {}, OpenLanguageQuestion},
      {"ClearSettings", "", topic::Templates, {}, OpenClearSettings},
      {"frmUserOptions", "", topic::StripChart, {}, OpenUserOptions},
      {"GraphFormNew", "", topic::StripChart, {"GraphFormNew", "Label*"}, graph({1300, 760})},
      {"GraphFormNew", "low", topic::StripChart, {"GraphFormNew", "Label*"}, graph({900, 260})},
      {"frmAbout", "", topic::Files, {"lblVersion", "txtSettings", "txtLogs"}, OpenAbout},
      {"HelpWindow", "", topic::Formulas, {"lblVersion"}, OpenHelp},
      {"MainForm", "ready", topic::FirstStart, {"MainForm", "StatusBar1_2"}, mainForm(State::Ready)},
      {"MainForm", "recording", topic::FirstStart, {"MainForm", "StatusBar1_2"}, mainForm(State::Recording)},
  };
  return windows;
}

}  // namespace velk::test
