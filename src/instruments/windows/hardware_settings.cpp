#include "instruments/windows/hardware_settings.h"

#include "base/numbers.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "instruments/windows/choice_box.h"
#include "model/help_topics.h"
#include "ui_hardware_settings.h"

namespace velk {

namespace {

/// A path by which a device is told apart can be long; its two ends say most.
constexpr int kDeviceWidth = 240;

}  // namespace

HardwareSettings::HardwareSettings(WindowHost& host, const HardwareQuestion& question)
    : QDialog(host.Parent()),
      ui_(std::make_unique<Ui::HardwareSettings>()),
      host_(host),
      formulae_(question.formulae),
      ports_(question.ports),
      choices_(question.choices),
      sampling_(SamplingChoiceOf(question.choices.SamplingRate)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Connecting);
  FillLists();
  ui_->txtNumberOfParameters->setText(QString::number(choices_.NumberOfParameters));
  ui_->txtSensitivityCriterion->setText(QString::number(choices_.SensitivityCriterion));
  ShowDevices();
  UpdateDisplay();
  ConnectLists();
  connect(ui_->cmdOK, &QPushButton::clicked, this, &HardwareSettings::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &HardwareSettings::reject);
  TranslateForm(*this, host.Words());
}

HardwareSettings::~HardwareSettings() = default;

void HardwareSettings::FillLists() {
  const auto text = [this](const MessageText& row) { return ToQt(host_.Words().Translator.In(row)); };
  for (const Protocol& row : Protocols()) ui_->cboSerialData->addItem(text(row.caption));
  for (const int number : kSamplingNumbers) ui_->cboSampling->addItem(QString::number(number));
  for (const MessageText unit : {text::SamplingSeconds, text::SamplingMinutes, text::SamplingHours})
    ui_->cboSamplingUnits->addItem(text(unit));
  for (const PortEntry& port : ports_) ui_->cboPort->addItem(text(text::ComPort) + QString::number(port.number));
  for (const auto rate : kBaudRates) ui_->cboBaudRate->addItem(QString::number(rate));
  for (std::size_t i = 0; i < kParities.size(); ++i) ui_->cboParity->addItem(text(ParityText(static_cast<int>(i))));
  for (const auto bits : kDataBits) ui_->cboDataBits->addItem(QString::number(bits));
  for (const auto bits : kStopBits) ui_->cboStopBits->addItem(ToQt(bits));
  for (std::size_t i = 0; i < kHandshakes.size(); ++i)
    ui_->cboHandshake->addItem(text(HandshakeText(static_cast<int>(i))));
}

void HardwareSettings::ConnectLists() {
  // Picking an entry anew is a choice too: the first entry of the protocols stands for the second.
  connect(ui_->cboSerialData, &QComboBox::currentIndexChanged, this, &HardwareSettings::PickProtocol);
  connect(ui_->cboSerialData, &QComboBox::activated, this, &HardwareSettings::PickProtocol);
  const auto onPick = [this](QComboBox* box, auto take) {
    connect(box, &QComboBox::currentIndexChanged, this, [take](int place) {
      if (place >= 0) take(static_cast<std::size_t>(place));
    });
  };
  onPick(ui_->cboSampling, [this](std::size_t i) { sampling_.number = kSamplingNumbers[i]; });
  onPick(ui_->cboSamplingUnits, [this](std::size_t i) { sampling_.unit = static_cast<SamplingUnit>(i); });
  onPick(ui_->cboPort, [this](std::size_t i) { choices_.PortNumber = static_cast<std::int16_t>(ports_[i].number); });
  onPick(ui_->cboBaudRate, [this](std::size_t i) { choices_.BaudRate = kBaudRates[i]; });
  onPick(ui_->cboParity, [this](std::size_t i) { choices_.Parity = kParities[i]; });
  onPick(ui_->cboDataBits, [this](std::size_t i) { choices_.DataBits = kDataBits[i]; });
  onPick(ui_->cboStopBits, [this](std::size_t i) { choices_.StopBits = kStopBits[i]; });
  onPick(ui_->cboHandshake, [this](std::size_t i) { choices_.Handshake = kHandshakes[i]; });
}

void HardwareSettings::UpdateDisplay() {
  const HardwareChoices shown = WithFixedPort(choices_);
  ShowChoice(*ui_->cboSerialData, ProtocolPlace(shown.SerialData), shown.SerialData);
  ShowChoice(*ui_->cboSampling, PlaceOf(kSamplingNumbers, sampling_.number), NumberText(sampling_.number));
  ShowChoice(*ui_->cboSamplingUnits, static_cast<int>(sampling_.unit), {});
  const bool offered = shown.PortNumber >= 1 && shown.PortNumber <= static_cast<int>(ports_.size());
  ShowChoice(*ui_->cboPort, offered ? shown.PortNumber - 1 : -1,
             host_.Words().Translator.In(text::ComPort + std::to_string(shown.PortNumber)));
  ShowChoice(*ui_->cboBaudRate, PlaceOf(kBaudRates, shown.BaudRate), std::to_string(shown.BaudRate));
  ShowChoice(*ui_->cboParity, PlaceOf(kParities, shown.Parity), shown.Parity);
  ShowChoice(*ui_->cboDataBits, PlaceOf(kDataBits, shown.DataBits), std::to_string(shown.DataBits));
  ShowChoice(*ui_->cboStopBits, PlaceOf(kStopBits, shown.StopBits), shown.StopBits);
  ShowChoice(*ui_->cboHandshake, PlaceOf(kHandshakes, shown.Handshake), std::to_string(shown.Handshake));

  const bool free = !ProtocolOf(shown.SerialData).unit;
  for (QWidget* const frame : std::initializer_list<QWidget*>{ui_->fraBaudRate, ui_->fraParity, ui_->fraDataBits,
                                                              ui_->fraStopBits, ui_->fraHandshake})
    frame->setEnabled(free);
}

void HardwareSettings::ShowDevices() {
  const auto labels = std::to_array({ui_->lblDevice_1, ui_->lblDevice_2, ui_->lblDevice_3, ui_->lblDevice_4});
  for (std::size_t i = 0; i < labels.size() && i < ports_.size(); ++i) {
    const PortEntry& port = ports_[i];
    const QString device = ToQt(port.device);
    const MessageText presence = port.exists ? text::DevicePresent : text::DeviceMissing;
    labels[i]->setText(QStringLiteral("%1: %2 - %3")
                           .arg(QString::number(port.number),
                                labels[i]->fontMetrics().elidedText(device, Qt::ElideMiddle, kDeviceWidth),
                                ToQt(host_.Words().Translator.In(presence))));
    labels[i]->setToolTip(device);
  }
}

/// The list shows what is stored, not what was pressed, so that nobody leaves with another protocol than he sees.
void HardwareSettings::PickProtocol(int place) {
  if (place < 0) return;
  choices_.SerialData = PickedSerialData(place, choices_.SerialData);
  UpdateDisplay();
}

void HardwareSettings::cmdOK_Click() {
  const std::string parameters = FromQt(ui_->txtNumberOfParameters->text());
  if (!Take(*ui_->txtNumberOfParameters, ReadParameterCount(parameters, formulae_), choices_.NumberOfParameters))
    return;
  choices_.SamplingRate = ChosenSamplingRate(sampling_, choices_.SamplingRate);
  const std::string sensitivity = FromQt(ui_->txtSensitivityCriterion->text());
  if (!Take(*ui_->txtSensitivityCriterion, ReadSensitivity(sensitivity), choices_.SensitivityCriterion)) return;
  accept();
}

bool HardwareSettings::Take(QLineEdit& box, const NumberRead& read, std::int16_t& field) {
  if (read.fault.IsEmpty()) {
    field = read.value;
    return true;
  }
  host_.Boxes().Message({read.fault, text::SerialPortProtocol, Buttons::Ok, BoxIcon::Exclamation});
  box.setFocus();
  box.selectAll();
  return false;
}

}  // namespace velk
