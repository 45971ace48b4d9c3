#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>

#include "platform/dialogs.h"

namespace velk {

/// Who failed, for the error box of an event procedure.
struct Report {
  Dialogs& dialogs;
  std::string procedure;                 ///< "mnuFileExit_Click"; stands behind " - " in the box
  std::string title = {};                ///< empty: the program's name
  std::function<void()> beforeBox = {};  ///< runs ahead of each box: what must not wait for the operator. A failure of
                                         ///< its own is added to the box's text
};

/// Thrown by Cancel; only RunProcedure catches it.
struct LeaveProcedure {};

Answer ShowProcedureError(const Report& report, const OperatorText& text, Buttons buttons);

/// The `run` of a procedure's body: runs a statement until it succeeds or Cancel is chosen.
class Statements {
 public:
  explicit Statements(const Report& report) : report_(report) {}

  template <class Statement>
  auto operator()(Statement&& statement) const -> std::invoke_result_t<Statement&> {
    for (;;) {
      OperatorText text;
      try {
        return statement();
      } catch (const std::exception& error) {
        text = TextOf(error);
      }
      if (ShowProcedureError(report_, text, Buttons::RetryCancel) != Answer::Retry) throw LeaveProcedure{};
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
  OperatorText text;
  try {
    std::forward<Body>(body)(Statements(report));
    return true;
  } catch (const LeaveProcedure&) {
    return false;
  } catch (const std::exception& error) {
    text = TextOf(error);
  }
  ShowProcedureError(report, text, Buttons::Ok);
  return false;
}

}  // namespace velk
