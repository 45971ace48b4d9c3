#include "i18n/windows/dialog_texts.h"

namespace velk {

DialogTexts DialogTextsIn(const clstranslation& translator) {
  return {.programName = translator.Translate(MessageId::ProgramName),
          .ok = translator.Translate(MessageId::ButtonOk),
          .cancel = translator.Translate(MessageId::ButtonCancel),
          .yes = translator.Translate(MessageId::ButtonYes),
          .no = translator.Translate(MessageId::ButtonNo),
          .retry = translator.Translate(MessageId::ButtonRetry)};
}

}  // namespace velk
