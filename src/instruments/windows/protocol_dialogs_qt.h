#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "i18n/translation.h"
#include "instruments/setup/protocol_dialogs.h"
#include "platform/windows/modal_windows.h"

namespace velk {

/// Asks with HardwareSettings, FormattedData, Intermittent, RequestedData and frmHPTHoneywellEZtrend.
class ProtocolDialogsQt : public ProtocolDialogs {
 public:
  ProtocolDialogsQt(Dialogs& dialogs, const Translation& translation)
      : dialogs_(dialogs), translation_(translation), windows_(dialogs) {}

  /// The main window, over which the windows stand.
  void SetParent(QWidget* parent) { parent_ = parent; }

  std::optional<HardwareChoices> AskHardwareSettings(const HardwareQuestion& question) override;
  std::optional<Separators> AskFormattedData(const Separators& separators) override;
  std::optional<Separators> AskIntermittent(const Separators& separators) override;
  std::optional<std::vector<ParameterCommands>> AskRequestedData(
      const std::vector<ParameterCommands>& commands) override;
  std::optional<UnitAddress> AskEthernetConfiguration(const UnitAddress& address) override;

 private:
  /// Runs the window and gives what `answer` reads from it; nothing where it was left otherwise.
  template <class Answer, class Window>
  std::optional<Answer> Run(Window* window, Answer (*answer)(const Window&));

  Dialogs& dialogs_;
  const Translation& translation_;
  ModalWindows windows_;
  QPointer<QWidget> parent_;
};

}  // namespace velk
