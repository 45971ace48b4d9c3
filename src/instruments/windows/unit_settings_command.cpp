#include "instruments/windows/unit_settings_command.h"

#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "instruments/unit/hardware_tools.h"
#include "instruments/unit/unit_settings.h"
#include "instruments/windows/orben_hardware.h"
#include "instruments/windows/orben_settings.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

/// Runs work on the unit as an event procedure of the window. False where it failed.
bool RunOnUnit(const UnitAccess& unit, const char* procedure, const std::function<void()>& work) {
  return RunProcedure({unit.platform.dialogs, procedure}, [&](const Statements& run) { run(work); });
}

void SendTyped(const UnitAccess& unit, UnitSettings& settings, const std::string& command) {
  RunProcedure({unit.platform.dialogs, "Command8_Click"}, [&](const Statements&) {
    try {
      settings.SendCommand(command);
    } catch (const RuntimeError& error) {
      unit.platform.dialogs.Message({text::ErrorBefore + error.Text(), {}, Buttons::Ok, BoxIcon::Critical});
    }
  });
}

void ShowTools(WindowHost& host, const UnitAccess& unit) {
  HardwareTools tools(unit);
  tools.Enter();
  OrbenHardwareWork work;
  work.lastChannel = unit.session.LastHardwareChannel;
  work.isReady = [&] { return tools.IsReady(); };
  work.send = [&](const UnitCommand& command, int channel, const std::string& preset) {
    return tools.Send(command, channel, preset);
  };
  work.cancel = [&] { tools.Cancel(); };
  host.Show<ORBENHardware>(work);
}

}  // namespace

void mnuToolsOrbenHardware_Click(WindowHost& host, const UnitAccess& unit, const std::function<void()>& beep) {
  Session& session = unit.session;
  if (!ProtocolOf(session).unit) {
    unit.platform.dialogs.Message({text::OwnUnitsOnly, text::UnitTableTitle, Buttons::Ok, BoxIcon::Exclamation});
    return;
  }
  UnitSettings settings(unit);
  OrbenSettingsWork work;
  work.wasRead = RunOnUnit(unit, "MatchParameters", [&] { settings.MatchParameters(); });
  work.unit = session.SerialData;
  work.table = work.wasRead ? session.OrbenSettings : EmptyUnitTable(session);
  work.directory = session.DefaultDirectory;
  work.beep = beep;
  work.send = [&](const UnitRows& table) { return RunOnUnit(unit, "Command1_Click", [&] { settings.Send(table); }); };
  work.reset = [&] { RunOnUnit(unit, "Command3_Click", [&] { settings.ResetToSystemDefault(); }); };
  work.setClock = [&] { RunOnUnit(unit, "Command4_Click", [&] { settings.SetClock(); }); };
  work.sendCommand = [&](const std::string& command) { SendTyped(unit, settings, command); };
  work.tools = [&] { ShowTools(host, unit); };
  work.cancel = [&] { settings.Cancel(); };
  work.clock = [&] { return settings.ClockText(); };
  work.issued = [&] { return settings.CommandIssued(); };
  if (const auto table = host.Show<OrbenSettings>(work)) session.OrbenSettings = *table;
}

}  // namespace velk
