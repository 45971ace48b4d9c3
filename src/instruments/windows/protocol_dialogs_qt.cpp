#include "instruments/windows/protocol_dialogs_qt.h"

#include "instruments/windows/formatted_data.h"
#include "instruments/windows/frm_hpt_honeywell_ez_trend.h"
#include "instruments/windows/hardware_settings.h"
#include "instruments/windows/intermittent.h"
#include "instruments/windows/requested_data.h"

namespace velk {

template <class Answer, class Window>
std::optional<Answer> ProtocolDialogsQt::Run(Window* made, Answer (*answer)(const Window&)) {
  // Watched: the parent may be destroyed while the window stands, and takes it along.
  const QPointer<Window> window = made;
  std::optional<Answer> given;
  if (windows_.Run(window.data())) given = answer(*window);
  delete window;
  return given;
}

std::optional<HardwareChoices> ProtocolDialogsQt::AskHardwareSettings(const HardwareQuestion& question) {
  return Run<HardwareChoices, HardwareSettings>(new HardwareSettings(question, dialogs_, translation_, parent_),
                                                [](const HardwareSettings& window) { return window.Choices(); });
}

std::optional<Separators> ProtocolDialogsQt::AskFormattedData(const Separators& separators) {
  return Run<Separators, FormattedData>(new FormattedData(separators, dialogs_, translation_, parent_),
                                        [](const FormattedData& window) { return window.Chosen(); });
}

std::optional<Separators> ProtocolDialogsQt::AskIntermittent(const Separators& separators) {
  return Run<Separators, Intermittent>(new Intermittent(separators, dialogs_, translation_, parent_),
                                       [](const Intermittent& window) { return window.Chosen(); });
}

std::optional<std::vector<ParameterCommands>> ProtocolDialogsQt::AskRequestedData(
    const std::vector<ParameterCommands>& commands) {
  return Run<std::vector<ParameterCommands>, RequestedData>(
      new RequestedData(commands, translation_, parent_),
      [](const RequestedData& window) { return window.Commands(); });
}

std::optional<UnitAddress> ProtocolDialogsQt::AskEthernetConfiguration(const UnitAddress& address) {
  return Run<UnitAddress, frmHPTHoneywellEZtrend>(
      new frmHPTHoneywellEZtrend(address, translation_, parent_),
      [](const frmHPTHoneywellEZtrend& window) { return window.Address(); });
}

}  // namespace velk
