#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>
#include <memory>

#include "i18n/windows/window_host.h"
#include "instruments/reading/heard_lines.h"
#include "instruments/setup/edit_serial_port.h"
#include "instruments/setup/sampling_choice.h"

namespace Ui {
class HardwareSettings;
}

namespace velk {

/// Edits the protocol, its port and what is taken from it. A stored value that a list doesn't offer is shown beside it
/// and stays until another one is picked.
class HardwareSettings : public QDialog {
  Q_OBJECT

 public:
  HardwareSettings(WindowHost& host, const HardwareQuestion& question);
  ~HardwareSettings() override;

  /// What was chosen, once the window was accepted.
  const HardwareChoices& Answer() const { return choices_; }

 private:
  void FillLists();
  void ConnectLists();
  void ConnectPort();
  /// Shows the choices, the port as the protocol fixes it.
  void UpdateDisplay();
  void ShowDevices();
  void PickProtocol(int place);
  void cmdOK_Click();
  void ShowNote(int picked);
  /// An own unit sends so many values, unless the operator has typed another number.
  void FillInChannels();
  void cmdDevice_Click(std::size_t place);
  void TakeDevice(std::size_t place, const std::string& path);
  /// Devices come and go while the window stands.
  void Look();
  void cmdListen_Click(bool listen);
  /// Listens where the choices lead by now.
  void FollowChoices();
  void ShowLines();
  /// Takes over what a box gives; false where it has to be put right first.
  bool Take(QLineEdit& box, const NumberRead& read, std::int16_t& field);

  std::unique_ptr<Ui::HardwareSettings> ui_;
  WindowHost& host_;
  const int formulae_;
  std::vector<PortEntry> ports_;
  std::vector<NamedDevice> devices_;
  const std::string delimiter_;
  PortListening* const listening_;
  const std::function<PortsFound()> look_;
  const std::vector<ListedTemplate> templates_;
  QTimer lookTimer_{this};
  HardwareChoices choices_;
  HeardLines heard_;
  SerialSettings heardOn_;  ///< while the window listens
  bool channelsTyped_ = false;
  SamplingChoice sampling_;
};

}  // namespace velk
