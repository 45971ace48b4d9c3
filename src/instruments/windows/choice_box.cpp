#include "instruments/windows/choice_box.h"

#include <QSignalBlocker>

#include "base/text_qt.h"

namespace velk {

void ShowChoice(QComboBox& box, int place, const std::string& stored) {
  const QSignalBlocker quiet(box);
  box.setPlaceholderText(place < 0 ? ToQt(stored) : QString());
  box.setCurrentIndex(place);
}

}  // namespace velk
