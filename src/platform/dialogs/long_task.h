#pragma once

#include <cstdint>

#include "platform/dialogs/procedure.h"
#include "platform/loop/clock.h"

namespace velk {

/// Thrown by a step of a long task that is cancelled: the procedure is left as by Cancel in an error's box. Whoever has
/// begun something puts it back on the way.
struct TaskCancelled : LeaveProcedure {};

/// Work that takes longer than an operator likes to wait for an answer: import, export, a filter, a sort, printing. It
/// lives on the stack of the work, which tells it each step:
///
///   LongTask task(dialogs, clock, text::Importing);
///   for (...) { task.Step(done, lines); ... }
///
/// The window below takes no other command meanwhile, samples go on, and after 300 ms a box shows how far it is.
class LongTask {
 public:
  /// `title` stands on the box.
  LongTask(Dialogs& dialogs, Clock& clock, const OperatorText& title);
  /// A window that begins the task shows by itself how far it is, and takes nothing but the end of it meanwhile.
  LongTask(Dialogs& dialogs, Clock& clock, std::unique_ptr<ProgressBox> shown);

  /// What is being done from here on, above the bar.
  void Doing(const OperatorText& text) { doing_ = text; }
  /// `done` of `of`, in any unit; an `of` of 0 is a length that nobody knows. Cheap enough for each row: it lets events
  /// run every few milliseconds only. Raises TaskCancelled where the operator has pressed Cancel or the program ends.
  void Step(double done, double of);

 private:
  Clock& clock_;
  Dialogs::Progress box_;
  OperatorText doing_;
  const std::int64_t began_;
  std::int64_t yielded_;
  std::int64_t shown_ = 0;
  bool appeared_ = false;
};

}  // namespace velk
