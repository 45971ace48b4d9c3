#include "instruments/windows/hardware_settings.h"

#include <QScrollBar>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "instruments/windows/choice_box.h"
#include "model/help_topics.h"
#include "platform/ports/serial.h"
#include "ui_hardware_settings.h"

namespace velk {

namespace {

/// A path by which a device is told apart can be long; its two ends say most.
constexpr int kDeviceWidth = 200;
/// How often it is looked what is plugged in.
constexpr int kLookMs = 1000;

/// Of a box that shows so many lines, with the bar that long ones need beneath them.
int HeightOf(const QPlainTextEdit& box, int lines) {
  const int around = box.frameWidth() + static_cast<int>(std::ceil(box.document()->documentMargin()));
  return (box.fontMetrics().lineSpacing() + 1) * lines + box.horizontalScrollBar()->sizeHint().height() + 2 * around;
}

}  // namespace

HardwareSettings::HardwareSettings(WindowHost& host, const HardwareQuestion& question)
    : QDialog(host.Parent()),
      ui_(std::make_unique<Ui::HardwareSettings>()),
      host_(host),
      formulae_(question.formulae),
      ports_(question.ports),
      devices_(question.devices),
      delimiter_(question.delimiter),
      listening_(question.listening),
      look_(question.look),
      templates_(question.templates),
      choices_(question.choices),
      sampling_(SamplingChoiceOf(question.choices.SamplingRate)) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Connecting);
  FillLists();
  ui_->txtNumberOfParameters->setText(QString::number(choices_.NumberOfParameters));
  ui_->txtSensitivityCriterion->setText(QString::number(choices_.SensitivityCriterion));
  ShowDevices();
  UpdateDisplay();
  ShowNote(-1);
  ConnectLists();
  ConnectPort();
  connect(ui_->cmdOK, &QPushButton::clicked, this, &HardwareSettings::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &HardwareSettings::reject);
  // Three digits need no more, and a small screen has none to give.
  for (QLineEdit* number : {ui_->txtNumberOfParameters, ui_->txtSensitivityCriterion})
    number->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
  TranslateForm(*this, host.Words());
}

HardwareSettings::~HardwareSettings() {
  if (listening_) listening_->Stop();
}

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
    connect(box, &QComboBox::currentIndexChanged, this, [this, take](int place) {
      if (place < 0) return;
      take(static_cast<std::size_t>(place));
      FollowChoices();
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

void HardwareSettings::ConnectPort() {
  const auto buttons = std::to_array({ui_->cmdDevice_1, ui_->cmdDevice_2, ui_->cmdDevice_3, ui_->cmdDevice_4});
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    buttons[i]->setEnabled(i < ports_.size());
    connect(buttons[i], &QPushButton::clicked, this, [this, i] { cmdDevice_Click(i); });
  }
  connect(ui_->txtNumberOfParameters, &QLineEdit::textEdited, this, [this] { channelsTyped_ = true; });
  connect(ui_->txtNumberOfParameters, &QLineEdit::textChanged, this, &HardwareSettings::ShowLines);
  ui_->txtLines->setFixedHeight(HeightOf(*ui_->txtLines, HeardLines::kKept));
  ui_->cmdListen->setEnabled(listening_ != nullptr);
  connect(ui_->cmdListen, &QPushButton::clicked, this, &HardwareSettings::cmdListen_Click);
  lookTimer_.setObjectName(QStringLiteral("lookTimer"));
  connect(&lookTimer_, &QTimer::timeout, this, &HardwareSettings::Look);
  if (look_) lookTimer_.start(kLookMs);
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

  ui_->txtNumberOfParameters->setEnabled(!CountsItems(shown.SerialData));
  const bool free = !ProtocolOf(shown.SerialData).unit && !CountsItems(shown.SerialData);
  for (QWidget* const frame : std::initializer_list<QWidget*>{ui_->fraBaudRate, ui_->fraParity, ui_->fraDataBits,
                                                              ui_->fraStopBits, ui_->fraHandshake})
    frame->setEnabled(free);
}

void HardwareSettings::ShowDevices() {
  const auto labels = std::to_array({ui_->lblDevice_1, ui_->lblDevice_2, ui_->lblDevice_3, ui_->lblDevice_4});
  for (std::size_t i = 0; i < labels.size() && i < ports_.size(); ++i) {
    const PortEntry& port = ports_[i];
    const QString device = ToQt(port.device);
    labels[i]->setText(QStringLiteral("%1: %2 - %3")
                           .arg(QString::number(port.number),
                                labels[i]->fontMetrics().elidedText(device, Qt::ElideMiddle, kDeviceWidth),
                                ToQt(host_.Words().Translator.In(PresenceText(port)))));
    labels[i]->setToolTip(device);
  }
}

/// The list shows what is stored, not what was pressed, so that nobody leaves with another protocol than he sees.
void HardwareSettings::PickProtocol(int place) {
  if (place < 0) return;
  choices_.SerialData = PickedSerialData(place, choices_.SerialData);
  FillInChannels();
  UpdateDisplay();
  ShowNote(place);
  FollowChoices();
}

void HardwareSettings::ShowNote(int picked) {
  const OperatorText note = ProtocolNote(picked, choices_.SerialData, templates_);
  ui_->lblProtocolNote->setText(ToQt(host_.Words().Translator.In(note)));
  ui_->lblProtocolNote->setVisible(!note.IsEmpty());
}

void HardwareSettings::FillInChannels() {
  const std::optional<int> channels = ChannelsOf(choices_.SerialData);
  if (channels && !channelsTyped_) ui_->txtNumberOfParameters->setText(QString::number(*channels));
}

/// Devices may come and go while the list stands.
void HardwareSettings::cmdDevice_Click(std::size_t place) {
  const std::vector<NamedDevice> devices = devices_;
  const PortEntry port = ports_[place];
  std::vector<std::string> entries{host_.Words().Translator.In(text::DeviceOfList + port.listed)};
  for (const NamedDevice& device : devices)
    entries.push_back(device.maker.empty() ? device.path : device.path + "  (" + device.maker + ")");
  const auto chosen = host_.Boxes().Choose({.title = text::DeviceOfPort + std::to_string(port.number),
                                            .prompt = text::ChooseDevice,
                                            .entries = entries,
                                            .mayEnter = true,
                                            .helpTopic = topic::Connecting});
  if (!chosen) return;
  std::string path = *chosen;
  if (path == entries.front()) path.clear();
  for (std::size_t i = 0; i < devices.size(); ++i)
    if (path == entries[i + 1]) path = devices[i].path;
  TakeDevice(place, path);
}

void HardwareSettings::TakeDevice(std::size_t place, const std::string& path) {
  PortEntry& port = ports_[place];
  choices_.PortDevice[port.number] = path;
  choices_.PortNumber = static_cast<std::int16_t>(port.number);
  port = WithDevice(port, path.empty() ? port.listed : path);
  ShowDevices();
  UpdateDisplay();
  FollowChoices();
}

void HardwareSettings::Look() {
  PortsFound found = look_();
  for (PortEntry& port : found.ports) {
    const auto chosen = choices_.PortDevice.find(port.number);
    if (chosen != choices_.PortDevice.end())
      port = WithDevice(port, chosen->second.empty() ? port.listed : chosen->second);
  }
  ports_ = std::move(found.ports);
  devices_ = std::move(found.devices);
  ShowDevices();
}

/// A port that is not on the list is named by none: nobody can listen there.
void HardwareSettings::cmdListen_Click(bool listen) {
  listening_->Stop();
  heard_ = {};
  const auto place = static_cast<std::size_t>(choices_.PortNumber - 1);
  ui_->cmdListen->setChecked(listen && place < ports_.size());
  ShowLines();
  if (!ui_->cmdListen->isChecked()) return;
  heardOn_ = LineOf(choices_, ports_[place].device);
  try {
    listening_->Listen(heardOn_, [this](const std::string& bytes) {
      heard_.Append(bytes);
      ShowLines();
    });
  } catch (const RuntimeError& error) {
    ui_->cmdListen->setChecked(false);
    ui_->lblLines->setText(ToQt(host_.Words().Translator.In(error.Text())));
  }
}

/// A port that stays is left open: some units restart where theirs is opened.
void HardwareSettings::FollowChoices() {
  const auto place = static_cast<std::size_t>(choices_.PortNumber - 1);
  const bool stays = place < ports_.size() && LineOf(choices_, ports_[place].device) == heardOn_;
  if (ui_->cmdListen->isChecked() && !stays) return cmdListen_Click(true);
  ShowLines();
}

void HardwareSettings::ShowLines() {
  QStringList lines;
  for (const std::string& line : heard_.Shown()) lines << ToQt(line);
  ui_->txtLines->setPlainText(lines.join('\n'));
  ui_->txtLines->moveCursor(QTextCursor::End);
  ui_->txtLines->moveCursor(QTextCursor::StartOfLine);
  if (!ui_->cmdListen->isChecked()) return ui_->lblLines->clear();
  const std::optional<UnitConstants>& unit = ProtocolOf(choices_.SerialData).unit;
  const std::string delimiter = unit ? std::string(unit->delimiter) : delimiter_;
  const OperatorText verdict = heard_.Verdict(delimiter, ui_->txtNumberOfParameters->text().toInt());
  ui_->lblLines->setText(ToQt(host_.Words().Translator.In(verdict)));
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
