#pragma once

#include <functional>
#include <utility>

#include "formula/windows/eq_editor.h"
#include "i18n/windows/window_host.h"
#include "model/command_binder.h"
#include "model/graph_window.h"
#include "model/main_view.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// The commands of the menu Tools that work on computed channels. Their windows are modal; samples go on.
class FormulaCommands {
 public:
  /// `changed` is called as soon as a channel was added, removed, or switched on or off.
  FormulaCommands(
      WindowHost& host, Session& session, const Platform& platform, MainView& view, GraphWindows& graphs,
      std::function<void()> changed = [] {})
      : host_(host),
        session_(session),
        platform_(platform),
        view_(view),
        graphs_(graphs),
        changed_(std::move(changed)) {}

  void Bind(CommandBinder& commands);

  /// The Formula Calculator.
  void mnuToolsDefine_Click();
  /// ComputedParameters, and what its boxes say when it is closed.
  void mnuToolsInclude_Click();
  /// Asks for a channel and removes it.
  void mnuToolsRemove_Click();

 private:
  WindowHost& host_;
  Session& session_;
  Platform platform_;
  MainView& view_;
  GraphWindows& graphs_;
  std::function<void()> changed_;
};

}  // namespace velk
