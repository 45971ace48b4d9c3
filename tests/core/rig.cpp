#include "core/rig.h"

#include <cstdio>

#include "base/dates.h"
#include "instruments/table/protocols.h"
#include "model/texts.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"

namespace velk::test {

namespace {

/// Link makes the plain port first, then the one of the line driver.
SerialPortFactory TwoPorts(FakeDevice& plain, FakeDevice& line) {
  return [&plain, &line]() -> std::unique_ptr<SerialPort> {
    return std::make_unique<FakeSerialPort>(plain.port ? line : plain);
  };
}

}  // namespace

Rig::Rig() : link(session, platform, view, timers, TwoPorts(plainPort, linePort)) {
  session.SerialData = std::string(protocol::Kesta3);
  session.DefaultDirectory = folder.Path();
  session.NumberOfParameters = 3;
  for (int i = 1; i <= kMaxParameters; ++i) {
    Parameter& parameter = session.Parameters[i];
    parameter.name = "Channel " + std::to_string(i);
    parameter.units = "psi";
    parameter.max = 100;
    parameter.format = "#0.000";
    parameter.FormIndex = static_cast<std::int16_t>(i == 3 ? 2 : 1);  // two curves on graph 1, one on graph 2
    parameter.GraphVisible = true;
    parameter.Gain = 1;
  }
  SetProtocolConstants(session);
  ChangeCurrentStatus(session, view, text::StatusReady);
  road.ProcessLine(Line(0, 0, 0));  // an own unit's first line is always dropped
}

void Rig::Connect() {
  clock.onYield = [this] {
    if (link.LinesSeen() == 0 && link.ODataCom1.IsOpen()) linePort.Receive(Line(1, 2, 3));
  };
  acquisition.mnuAcquireConnect_Click();
  clock.onYield = nullptr;
}

void Rig::ConnectAndStart() {
  Connect();
  acquisition.mnuAcquireStart_Click();
}

void Rig::ChooseFile(const std::string& name) {
  dialogs.ExpectSaveFile(Path(name));
  recorder.mnuFileRecord_Click();
}

std::string Rig::Line(double a, double b, double c) const {
  char values[64];
  std::snprintf(values, sizeof values, " %09.3f %09.3f %09.3f\r\n", a, b, c);
  return FormatDate(clock.Now(), "hh:mm:ss") + values;
}

void Rig::Sample(double a, double b, double c) {
  clock.Advance(1000);
  road.ProcessLine(Line(a, b, c));
}

std::vector<Rig::Row> Rig::Rows(const std::string& path) const {
  const auto connection = Connection::Open(path, OpenMode::ReadOnly);
  Command command(*connection, "SELECT * FROM logData ORDER BY ID");
  std::vector<Row> rows;
  const auto number = [&](int column) {
    const FieldValue value = command.Field(column);
    const auto* whole = std::get_if<std::int64_t>(&value);
    return whole ? static_cast<double>(*whole) : std::get<double>(value);
  };
  while (command.Next()) rows.push_back({number(1), number(2), number(3), number(4), number(5)});
  return rows;
}

}  // namespace velk::test
