#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>

#include "platform/dialogs/dialogs.h"

namespace velk {

/// What a statement has failed with.
struct Failure {
  OperatorText text;
  ErrorNumber number = ErrorNumber::Internal;
};

/// Keeps the boxes of failures away that would come again and again.
class BoxPause {
 public:
  virtual ~BoxPause() = default;
  /// Whether the box of this failure stays away; its answer is then Cancel.
  virtual bool StaysAway(const Failure& failure) = 0;
  /// The box was answered.
  virtual void WasAnswered(const Failure& failure, Answer answer) = 0;
};

/// Who failed, for the error box of an event procedure.
struct Report {
  Dialogs& dialogs;
  std::string procedure;      ///< "mnuFileExit_Click"; stands behind " - " in the box
  OperatorText title = {};    ///< empty: the program's name
  BoxPause* pause = nullptr;  ///< null: each failure has its box
};

/// Thrown by Cancel; only RunProcedure catches it.
struct LeaveProcedure {};

Failure FailureOf(const std::exception& error);

Answer ShowProcedureError(const Report& report, const Failure& failure, Buttons buttons);

/// The `run` of a procedure's body: runs a statement until it succeeds or Cancel is chosen.
class Statements {
 public:
  explicit Statements(const Report& report) : report_(report) {}

  template <class Statement>
  auto operator()(Statement&& statement) const -> std::invoke_result_t<Statement&> {
    for (;;) {
      Failure failure;
      try {
        return statement();
      } catch (const std::exception& error) {
        failure = FailureOf(error);
      }
      if (ShowProcedureError(report_, failure, Buttons::RetryCancel) != Answer::Retry) throw LeaveProcedure{};
    }
  }

 private:
  const Report& report_;
};

/// Runs the body of an event procedure. `body` takes `run` and marks with it each statement that can fail:
///
///   RunProcedure({dialogs, "mnuFileExit_Click"}, [&](auto run) { ...; run([&] { SaveSettings(...); }); ... });
///
/// A marked statement that throws shows its error text, " - " and the procedure's name with Retry and Cancel: Retry
/// runs that statement again, so it must be idempotent or all-or-nothing; Cancel leaves the procedure. An error from
/// outside a marked statement is shown with Ok only: it is a defect. Gives false when the procedure was left by an
/// error.
template <class Body>
bool RunProcedure(const Report& report, Body&& body) {
  Failure failure;
  try {
    std::forward<Body>(body)(Statements(report));
    return true;
  } catch (const LeaveProcedure&) {
    return false;
  } catch (const std::exception& error) {
    failure = FailureOf(error);
  }
  ShowProcedureError(report, failure, Buttons::Ok);
  return false;
}

}  // namespace velk
