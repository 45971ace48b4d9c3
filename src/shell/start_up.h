#pragma once

#include <QTranslator>
#include <functional>
#include <memory>
#include <string>

#include "core/sources/sample_sources.h"
#include "i18n/translation.h"
#include "instruments/link/link.h"
#include "model/session.h"
#include "platform/platform.h"
#include "shell/frame.h"
#include "shell/main_form.h"

namespace velk {

/// Start-up in its order, up to the open link. A step that fails is told with its number, and the next one goes on.
class StartUp {
 public:
  /// What the steps work on; all of it outlives the start-up.
  struct Parts {
    Session& session;
    Platform& platform;
    Translation& translation;
    MainForm& form;
    Frame& frame;
    Link& link;
    SampleSources& sources;
    std::function<void()> editSerialPort;  ///< where the operator doesn't go on with the present port
  };
  /// `programFolder` is where the program's own files are.
  StartUp(const Parts& parts, const std::string& programFolder) : parts_(parts), programFolder_(programFolder) {}

  void Run();

 private:
  void Step(int number, const std::function<void()>& work);
  void ShowError(const OperatorText& text, int step);
  void LoadLanguage();
  void ReadSettings();
  void ResetFlags();
  void HideAcquireTimeButtons();
  void OpenLink();
  OperatorText PresentPort() const;

  Parts parts_;
  const std::string programFolder_;
  std::unique_ptr<QTranslator> toolkitTexts_;
};

}  // namespace velk
