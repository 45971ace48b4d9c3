#pragma once

#include <QDialog>
#include <QLabel>
#include <memory>
#include <vector>

#include "i18n/translation.h"
#include "model/session.h"
#include "platform/windows/modal_windows.h"

namespace Ui {
class Alarms;
}

namespace velk {

/// The names of the parameters that were out of their limits when the window was opened, in labels `Label1_<n>` from 0.
class Alarms : public QDialog {
  Q_OBJECT

 public:
  Alarms(const Session& session, const Translation& translation, QWidget* parent = nullptr);
  ~Alarms() override;

 private:
  /// Below the last one; the first is the template itself.
  void AddLabel(const QString& name);
  void FitToLabels();

  std::unique_ptr<Ui::Alarms> ui_;
  std::vector<QLabel*> label1_;
};

/// Shows the window, modal over `parent`; samples go on behind it. For the button Command1 and the toolbar's Alarms.
void Command1_Click(const Session& session, const Translation& translation, ModalWindows& windows, QWidget* parent);

}  // namespace velk
