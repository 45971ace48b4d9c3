#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"

namespace velk {

/// A command as RequestedData shows it: its text, and whether a CR and an LF follow.
struct CommandText {
  std::string text;
  bool cr = false;
  bool lf = false;

  bool operator==(const CommandText&) const = default;
};

/// A stored command taken apart; JoinCommand puts any command together again as it was.
CommandText SplitCommand(std::string_view stored);
std::string JoinCommand(const CommandText& command);

/// What an instrument that is asked gets for one parameter.
struct ParameterCommands {
  std::string name;
  std::string CommandString;
  std::string ResetCommand;
};

/// Those of the parameters 1 to `count`.
std::vector<ParameterCommands> CommandsOf(const Session::PerParameter<Parameter>& parameters, int count);

/// Puts both commands of each into Parameters and CurrentParameters, from 1 on.
void StoreCommands(Session& session, const std::vector<ParameterCommands>& commands);

}  // namespace velk
