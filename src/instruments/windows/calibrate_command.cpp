#include "instruments/windows/calibrate_command.h"

#include "instruments/calibration/read_reference.h"
#include "instruments/windows/calibrate_form.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/dialogs/procedure.h"

namespace velk {

void mnuToolsCalibrate_Click(WindowHost& host, Session& session, const Platform& platform, MainView& view, Link& link,
                             MainTimers& timers, const std::function<void()>& keep) {
  RunProcedure({platform.dialogs, "mnuToolsCalibrate_Click"}, [&](const Statements&) {
    CalibrationWork work;
    for (int i = 1; i <= session.NumberOfParameters; ++i) work.names.push_back(session.CurrentParameters[i].name);
    work.canRead = CanReadReferences(session);
    work.read = [&](int parameter, const std::function<void(double)>& show) {
      return ReadReference(session, platform, link, timers, parameter, show);
    };
    work.stop = [&] { session.StopRequested = true; };
    work.take = [&](int parameter, ChannelScale scale) {
      session.CurrentParameters[parameter].Gain = scale.gain;
      session.CurrentParameters[parameter].Offset = scale.offset;
    };
    host.Show<CalibrateForm>(work);
    for (int i = 1; i <= session.NumberOfParameters; ++i) {
      session.Parameters[i].Gain = session.CurrentParameters[i].Gain;
      session.Parameters[i].Offset = session.CurrentParameters[i].Offset;
    }
    keep();
    if (!session.ProgramEnding) ChangeCurrentStatus(session, view, text::StatusReadyToAcquire);
  });
}

}  // namespace velk
