#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>
#include <deque>
#include <functional>
#include <string>

#include "support/window_driving.h"

namespace velk::test {

/// What an operator does with the program's dialogs, one behind the other: each step acts on the dialog that has come
/// up. A dialog that was not foreseen, and a step left over at the end, fail the test.
class WindowScript {
 public:
  WindowScript() {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] { Look(); });
  }
  ~WindowScript() {
    for (const Step& left : steps_) ADD_FAILURE() << "a window that never came: " << left.window;
  }

  /// The next dialog has this name. It stays where `act` doesn't leave it.
  void Then(const char* window, std::function<void(QDialog&)> act) {
    steps_.push_back({window, std::move(act)});
    look_.start(0);
  }
  void ThenClick(const char* window, const char* button) {
    Then(window, [button](QDialog& shown) { Click(shown, button); });
  }
  bool IsDone() const { return steps_.empty(); }

 private:
  struct Step {
    std::string window;
    std::function<void(QDialog&)> act;
  };

  void Look() {
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!window || window == last_) return;
    last_ = window;
    if (steps_.empty()) {
      ADD_FAILURE() << "a window that was not foreseen: " << window->objectName().toStdString();
      return window->reject();
    }
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    EXPECT_EQ(window->objectName().toStdString(), step.window);
    step.act(*window);
  }

  std::deque<Step> steps_;
  QPointer<QDialog> last_;
  QTimer look_;
};

}  // namespace velk::test
