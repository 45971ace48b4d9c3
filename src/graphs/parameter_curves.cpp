#include "graphs/parameter_curves.h"

namespace velk {

void CarryBack(Session& session, const ParameterCurves& curves) {
  for (int slot = 1; slot <= curves.Count(); ++slot) {
    const int parameter = curves.ParameterOf(slot);
    if (ShowsFile(session)) {
      session.PlaybackParameters[parameter] = curves.Curve(slot);
      continue;
    }
    const int formula = parameter - session.NumberOfParameters;
    if (formula <= 0)
      session.Parameters[parameter] = curves.Curve(slot);
    else if (formula < static_cast<int>(session.AdditionalParameters.size()))
      CopyDefinition(curves.Curve(slot), session.AdditionalParameters[formula]);
  }
}

}  // namespace velk
