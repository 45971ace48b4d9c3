#include "instruments/windows/auto_detect_box.h"

#include "base/text_qt.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "platform/texts.h"
#include "platform/windows/progress_window.h"

namespace velk {

std::unique_ptr<ProgressBox> MakeFrmAutoDetect(const WindowHost& host) {
  const auto shown = [&](const MessageText& text) { return ToQt(host.Words().Translator.In(text)); };
  return std::make_unique<StandingProgress>(shown(text::DetectTitle), shown(text::ButtonCancel), host.Parent(),
                                            "frmAutoDetect", topic::UnitTable);
}

}  // namespace velk
