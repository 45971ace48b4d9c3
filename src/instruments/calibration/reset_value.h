#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "instruments/link/link.h"
#include "model/session.h"
#include "platform/loop/clock.h"
#include "platform/platform.h"

namespace velk {

/// What is sent to set a parameter's value in its instrument: the number ahead of the command's last character. The
/// command is not empty.
std::string ResetText(const std::string& command, const std::string& number);

/// The command that sets a value in an instrument that is asked.
class ResetValue {
 public:
  /// `isPortInUse` tells whether an answer is being waited for: a command between a request and its answer would upset
  /// both, so it is sent behind them.
  ResetValue(Session& session, const Platform& platform, Link& link, std::function<bool()> isPortInUse);

  /// Asks for the parameter and for its new value, and sends it.
  void mnuToolsReset_Click();

 private:
  /// The new value as text; empty where nobody wants one.
  std::string AskNumber() const;
  void SendWaiting();

  Session& session_;
  Platform platform_;
  Link& link_;
  const std::function<bool()> isPortInUse_;
  std::deque<std::string> waiting_;
  std::unique_ptr<Timer> tryAgain_;
};

}  // namespace velk
