#pragma once

#include <QPointer>
#include <QWidget>

#include "formula/windows/eq_editor.h"
#include "model/graph_window.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/windows/modal_windows.h"

namespace velk {

/// The commands of the menu Tools that open the windows of computed channels. The windows are modal; samples go on.
class FormulaWindows {
 public:
  FormulaWindows(Session& session, Dialogs& dialogs, MainView& view, GraphWindows& graphs)
      : session_(session), dialogs_(dialogs), view_(view), graphs_(graphs), windows_(dialogs) {}

  /// The main window, over which the windows stand.
  void SetParent(QWidget* parent) { parent_ = parent; }

  /// The Formula Calculator.
  void mnuToolsDefine_Click();
  /// ComputedParameters, and what its boxes say when it is closed.
  void mnuToolsInclude_Click();

 private:
  void ShowParameters(QWidget* over);

  Session& session_;
  Dialogs& dialogs_;
  MainView& view_;
  GraphWindows& graphs_;
  ModalWindows windows_;
  QPointer<QWidget> parent_;
};

}  // namespace velk
