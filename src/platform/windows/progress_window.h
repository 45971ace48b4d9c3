#pragma once

#include <QDialog>
#include <QPointer>
#include <memory>

#include "platform/dialogs/dialogs.h"

namespace Ui {
class ProgressWindow;
}

namespace velk {

/// How far a long task is: what is being done, a bar, and Cancel. It blocks the windows below from the moment that it
/// is made, and is on the screen from Appear on.
class ProgressWindow : public QDialog {
  Q_OBJECT

 public:
  ProgressWindow(const QString& title, const QString& cancel, QWidget* parent);
  ~ProgressWindow() override;

  void Appear();
  /// From 0 to 1; below 0 nobody knows how far it is.
  void ShowDone(const QString& doing, double share);
  bool IsCancelled() const { return cancelled_; }

  /// The box stays until the task has seen it.
  void reject() override;

 private:
  std::unique_ptr<Ui::ProgressWindow> ui_;
  bool cancelled_ = false;
};

/// The window as the boxes hand it out. The window below may be destroyed while it stands, and takes it along: the task
/// is cancelled then.
class StandingProgress : public ProgressBox {
 public:
  /// `name` is that of the window, where it has one of its own, and `helpTopic` the page that F1 opens in it.
  StandingProgress(const QString& title, const QString& cancel, QWidget* owner, const char* name = "ProgressWindow",
                   int helpTopic = 0);
  ~StandingProgress() override;

  void Appear() override;
  void Show(const std::string& doing, double share) override;
  bool IsCancelled() const override { return !window_ || window_->IsCancelled(); }

 private:
  const QPointer<ProgressWindow> window_;
};

}  // namespace velk
