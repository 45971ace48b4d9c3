#include "graphs/parameter_curves.h"

namespace velk {

namespace {

/// Which of the computed channels are shown, and where, is the file's while one is shown.
void CarryComputedBack(Session& session, const Parameter& shown, int formula) {
  if (formula < 1 || formula >= static_cast<int>(session.AdditionalParameters.size())) return;
  Parameter& configured = session.AdditionalParameters[static_cast<std::size_t>(formula)];
  if (ShowsFile(session))
    CopyDefinitionInFile(shown, configured);
  else
    CopyDefinition(shown, configured);
}

}  // namespace

void CarryBack(Session& session, const ParameterCurves& curves) {
  const int inputs = ShowsFile(session) ? session.PlaybackParameterCount : session.NumberOfParameters;
  auto& configured = ShowsFile(session) ? session.PlaybackParameters : session.Parameters;
  for (int slot = 1; slot <= curves.Count(); ++slot) {
    const int parameter = curves.ParameterOf(slot);
    if (parameter <= inputs)
      configured[static_cast<std::size_t>(parameter)] = curves.Curve(slot);
    else if (!ShowsFile(session) || FileHasItsPlace(session))
      CarryComputedBack(session, curves.Curve(slot), parameter - inputs);
  }
}

}  // namespace velk
