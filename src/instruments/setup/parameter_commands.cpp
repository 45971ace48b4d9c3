#include "instruments/setup/parameter_commands.h"

namespace velk {

namespace {

bool TakeOff(std::string& text, char end) {
  if (!text.ends_with(end)) return false;
  text.pop_back();
  return true;
}

}  // namespace

CommandText SplitCommand(std::string_view stored) {
  CommandText command{std::string(stored)};
  command.lf = TakeOff(command.text, '\n');
  command.cr = TakeOff(command.text, '\r');
  return command;
}

std::string JoinCommand(const CommandText& command) {
  return command.text + (command.cr ? "\r" : "") + (command.lf ? "\n" : "");
}

std::vector<ParameterCommands> CommandsOf(const Session::PerParameter<Parameter>& parameters, int count) {
  std::vector<ParameterCommands> commands;
  for (int i = 1; i <= count; ++i) {
    const Parameter& parameter = parameters[static_cast<std::size_t>(i)];
    commands.push_back({parameter.name, parameter.CommandString, parameter.ResetCommand});
  }
  return commands;
}

void StoreCommands(Session& session, const std::vector<ParameterCommands>& commands) {
  for (std::size_t i = 0; i < commands.size(); ++i) {
    for (auto* const parameters : {&session.Parameters, &session.CurrentParameters}) {
      Parameter& parameter = parameters->at(i + 1);
      parameter.CommandString = commands[i].CommandString;
      parameter.ResetCommand = commands[i].ResetCommand;
    }
  }
}

}  // namespace velk
