#include <QApplication>
#include <QPushButton>
#include <stdexcept>

#include "instruments/texts.h"
#include "instruments/windows/auto_detect_box.h"
#include "instruments/windows/calibrate_form.h"
#include "instruments/windows/formatted_data.h"
#include "instruments/windows/frm_hpt_honeywell_ez_trend.h"
#include "instruments/windows/hardware_settings.h"
#include "instruments/windows/intermittent.h"
#include "instruments/windows/orben_hardware.h"
#include "instruments/windows/orben_settings.h"
#include "instruments/windows/requested_data.h"
#include "model/help_topics.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

/// A port on which a unit of 22 channels speaks at once.
class SpeakingPort : public PortListening {
 public:
  void Listen(const SerialSettings&, std::function<void(const std::string&)> onBytes) override {
    std::string line = "12:00:01";
    for (int channel = 1; channel <= 22; ++channel) line += " " + std::to_string(1000 + channel) + ".25";
    for (int i = 0; i < 5; ++i) onBytes(line + "\r\n");
  }
  void Stop() override {}
};

HardwareQuestion QuestionFor(const char* protocol) {
  return {{.SerialData = protocol, .NumberOfParameters = 5, .SamplingRate = 300.0 / 86400, .PortNumber = 3},
          2,
          {{1, "/dev/ttyS0", true},
           {2, "/dev/ttyS1", false},
           {3, "/dev/serial/by-id/usb-Prolific_Technology_Inc._USB-Serial_Controller_D-if00-port0", true},
           {4, "/dev/ttyUSB1", false}}};
}

std::shared_ptr<QWidget> OpenHardwareSettings(const std::string& language, const char* protocol) {
  return Hosted<HardwareSettings>(MakeJob(language), QuestionFor(protocol));
}

std::shared_ptr<QWidget> OpenListening(const std::string& language) {
  static SpeakingPort port;
  HardwareQuestion question = QuestionFor("KESTA version 5");
  question.choices.NumberOfParameters = 22;
  question.listening = &port;
  auto window = Hosted<HardwareSettings>(MakeJob(language), question);
  window->findChild<QPushButton*>("cmdListen")->click();
  return window;
}

template <class Window>
std::shared_ptr<QWidget> OpenSeparators(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<Window>(job, Separators{"|", "\r\n"});
}

std::shared_ptr<QWidget> OpenRequestedData(const std::string& language) {
  const Job job = MakeJob(language);
  return Hosted<RequestedData>(job, CommandsOf(job->session.Parameters, job->session.NumberOfParameters));
}

std::shared_ptr<QWidget> OpenEthernet(const std::string& language) {
  return Hosted<frmHPTHoneywellEZtrend>(MakeJob(language), UnitAddress{"192.168.0.100", "pens.htm"});
}

std::shared_ptr<QWidget> OpenCalibration(const std::string& language, bool canRead) {
  const Job job = MakeJob(language);
  CalibrationWork work;
  for (int i = 1; i <= job->session.NumberOfParameters; ++i) work.names.push_back(job->session.Parameters[i].name);
  work.canRead = canRead;
  work.stop = [] {};
  return Hosted<CalibrateForm>(job, work);
}

std::shared_ptr<QWidget> OpenOrbenSettings(const std::string& language, bool wasRead) {
  OrbenSettingsWork work;
  work.unit = "KESTA version 4";
  work.wasRead = wasRead;
  for (int i = 1; i <= 18; ++i) {
    work.table.push_back({std::to_string(i), "", "", "0.000", "", ""});
    if (!wasRead) continue;
    work.table.back()[unit_column::Offset] = "-0.125";
    work.table.back()[unit_column::Gain] = "12.0625";
    if (i % 3 == 0) work.table.back()[unit_column::UpperAlarm] = "12000";
  }
  work.clock = [wasRead] { return wasRead ? std::string("14-Mar-2026  09:30:00") : std::string("–"); };
  work.issued = [] { return std::string("g 3 12.0625"); };
  work.cancel = [] {};
  return Hosted<OrbenSettings>(MakeJob(language), work);
}

std::shared_ptr<QWidget> OpenOrbenHardware(const std::string& language, bool isReady) {
  OrbenHardwareWork work;
  work.lastChannel = 13;
  work.isReady = [isReady] { return isReady; };
  work.send = [](const UnitCommand&, int, const std::string&) { return std::optional<std::string>(); };
  work.cancel = [] {};
  return Hosted<ORBENHardware>(MakeJob(language), work);
}

std::shared_ptr<QWidget> OpenAutoDetect(const std::string& language) {
  struct Held {
    Job job;
    std::unique_ptr<ProgressBox> box;
  };
  const Job job = MakeJob(language);
  const std::shared_ptr<Held> held(new Held{job, MakeFrmAutoDetect(job->host)});
  held->box->Show(job->platform.language.In(text::DetectListeningHandshake + std::string("3")), 0.6);
  held->box->Appear();
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() != "frmAutoDetect") continue;
    window->hide();
    return {held, window};
  }
  throw std::logic_error("no frmAutoDetect");
}

const std::set<std::string> kUnitTable = {"lblClock", "lblIssued"};
const std::set<std::string> kSeparatorWindow = {"optTerminator_*", "lblTyped"};

const WindowsOf kInstruments([] {
  const auto hardware = [](const char* protocol) {
    return [=](const std::string& language) { return OpenHardwareSettings(language, protocol); };
  };
  const auto calibration = [](bool canRead) {
    return [=](const std::string& language) { return OpenCalibration(language, canRead); };
  };
  const auto unitTable = [](bool wasRead) {
    return [=](const std::string& language) { return OpenOrbenSettings(language, wasRead); };
  };
  const auto unitTools = [](bool isReady) {
    return [=](const std::string& language) { return OpenOrbenHardware(language, isReady); };
  };
  return std::vector<ListedWindow>{
      {"HardwareSettings",
       "",
       topic::Connecting,
       {"lblDevice_*", "lblProtocolNote", "lblLines"},
       hardware("Data Taker a")},
      {"HardwareSettings",
       "own-unit",
       topic::Connecting,
       {"lblDevice_*", "lblProtocolNote", "lblLines"},
       hardware("KESTA version 3")},
      {"HardwareSettings",
       "listening",
       topic::Connecting,
       {"lblDevice_*", "lblProtocolNote", "lblLines"},
       OpenListening},
      {"FormattedData", "", topic::Instruments, kSeparatorWindow, OpenSeparators<FormattedData>},
      {"Intermittent", "", topic::Instruments, kSeparatorWindow, OpenSeparators<Intermittent>},
      {"RequestedData", "", topic::Instruments, {"lblName_*", "chkCommand*", "chkReset*"}, OpenRequestedData},
      {"frmHPTHoneywellEZtrend", "", topic::Instruments, {}, OpenEthernet},
      {"CalibrateForm", "", topic::Parameters, {}, calibration(true)},
      {"CalibrateForm", "others", topic::Parameters, {}, calibration(false)},
      {"OrbenSettings", "", topic::UnitTable, kUnitTable, unitTable(true)},
      {"OrbenSettings", "unread", topic::UnitTable, kUnitTable, unitTable(false)},
      {"ORBENHardware", "", topic::UnitTable, {}, unitTools(true)},
      {"ORBENHardware", "not-ready", topic::UnitTable, {}, unitTools(false)},
      {"frmAutoDetect", "", topic::UnitTable, {"frmAutoDetect", "lblDoing", "barDone", "cmdCancel"}, OpenAutoDetect},
  };
});

}  // namespace
}  // namespace velk::test
