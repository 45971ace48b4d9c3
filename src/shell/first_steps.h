#pragma once

#include <QFrame>
#include <QTimer>
#include <functional>
#include <vector>

#include "model/session.h"

class QMdiArea;
class QPushButton;

namespace velk {

class MainForm;

/// What stands in an empty work area: the steps from a new program to a recorded job, each a button that runs its
/// command and shows whether it is done. It goes where graphs stand.
class FirstSteps : public QFrame {
  Q_OBJECT

 public:
  /// Made before the window is translated, so that its captions are; both outlive it.
  FirstSteps(MainForm& form, const Session& session);

  /// Starts a VELK of its own with a simulated unit.
  std::function<void()> onSimulatedUnit;
  /// Whether the port of the settings has its device.
  std::function<bool()> portIsThere;

  /// Follows what has been done and what may be done now.
  void Refresh();

 protected:
  /// The marks have the colours of the desktop.
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Step {
    QPushButton* button;
    const char* item;
    std::function<bool()> isDone;
  };

  void AddStep(const char* name, const char* caption, const char* item, std::function<bool()> isDone);
  void ShowDone(QPushButton& button, bool done);
  void Place();

  MainForm& form_;
  const Session& session_;
  QMdiArea& area_;
  std::vector<Step> steps_;
  QTimer follow_;
};

}  // namespace velk
