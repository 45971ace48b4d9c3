#pragma once

#include <QFrame>
#include <QTimer>
#include <functional>
#include <vector>

#include "model/session.h"

class QBoxLayout;
class QLabel;
class QMdiArea;
class QPushButton;

namespace velk {

class MainForm;

/// What stands in an empty work area: the steps from a new program to a recorded job, each a button that runs its
/// command and shows whether it is done. It goes where graphs stand; who connects by it has the steps that are left in
/// a strip above the graphs until the job is started.
class FirstSteps : public QFrame {
  Q_OBJECT

 public:
  /// Made before the window is translated, so that its captions are; all outlive it. `aboveGraphs` is where the strip
  /// stands, at its front.
  FirstSteps(MainForm& form, const Session& session, QBoxLayout& aboveGraphs);

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
  /// When a step can be taken: some only behind Connect, since it begins with no file and makes the channels anew.
  enum class When { Any, OnceConnected };
  struct Step {
    QPushButton* button;
    const char* item;
    When when;
    std::function<bool()> isDone;
  };

  QLabel* AddLabel(const char* name, const char* caption);
  void AddSteps();
  void AddSimulatedUnit();
  void AddStep(const char* name, const char* caption, const char* item, When when, std::function<bool()> isDone);
  void Take(const char* item);
  void ShowStep(const Step& step);
  void ShowDone(QPushButton& button, bool done);
  void StandAsStrip(bool strip);
  void Place();

  MainForm& form_;
  const Session& session_;
  QMdiArea& area_;
  QBoxLayout& aboveGraphs_;
  std::vector<Step> steps_;
  std::vector<QWidget*> onlyInArea_;
  bool isStrip_ = false;
  bool leadsOn_ = false;  ///< its own step has connected
  QTimer follow_;
  QTimer simulatedStarts_{this};
};

}  // namespace velk
