#pragma once

#include <QDialog>
#include <QLabel>
#include <memory>
#include <vector>

#include "i18n/windows/window_host.h"
#include "model/command_binder.h"
#include "model/session.h"

namespace Ui {
class Alarms;
}

namespace velk {

/// The names of the parameters that were out of their limits when the window was opened, in labels `Label1_<n>` from 0.
class Alarms : public QDialog {
  Q_OBJECT

 public:
  Alarms(WindowHost& host, const Session& session);
  ~Alarms() override;

 private:
  /// Below the last one; the first is the template itself.
  void AddLabel(const QString& name);
  void FitToLabels();

  std::unique_ptr<Ui::Alarms> ui_;
  std::vector<QLabel*> label1_;
};

/// Binds the two buttons that show the window: the toolbar's Alarms and the indicator Command1. Samples go on behind
/// it.
void BindAlarms(CommandBinder& commands, WindowHost& host, const Session& session);

}  // namespace velk
