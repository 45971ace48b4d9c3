#pragma once

#include <QPointer>
#include <QWidget>

#include "formula/windows/eq_editor.h"
#include "model/graph_window.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/platform.h"
#include "platform/windows/modal_windows.h"

namespace velk {

/// The commands of the menu Tools that open the windows of computed channels. The windows are modal; samples go on.
class FormulaWindows {
 public:
  FormulaWindows(Session& session, const Platform& platform, MainView& view, GraphWindows& graphs,
                 const Translation& translation)
      : session_(session),
        platform_(platform),
        view_(view),
        graphs_(graphs),
        translation_(translation),
        windows_(platform.dialogs) {}

  /// The main window, over which the windows stand.
  void SetParent(QWidget* parent) { parent_ = parent; }

  /// The Formula Calculator.
  void mnuToolsDefine_Click();
  /// ComputedParameters, and what its boxes say when it is closed.
  void mnuToolsInclude_Click();

 private:
  void ShowParameters(QWidget* over);

  Session& session_;
  Platform platform_;
  MainView& view_;
  GraphWindows& graphs_;
  const Translation& translation_;
  ModalWindows windows_;
  QPointer<QWidget> parent_;
};

}  // namespace velk
