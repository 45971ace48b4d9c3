#include "core/sources/opc_source.h"

#include <algorithm>
#include <utility>

#include "instruments/setup/hardware_choices.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"
#include "opc/texts.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

constexpr int kLineMs = 1000;

}  // namespace

OpcSource::OpcSource(Session& session, const Platform& platform, MainTimers& timers, MainView& view, SampleRoad& road,
                     VELKOPCModule& items)
    : session_(session),
      platform_(platform),
      timer7_(*timers.Timer7),
      timer8_(*timers.Timer8),
      view_(view),
      road_(road),
      items_(items) {
  timer7_.SetInterval(kLineMs);
  timer7_.SetHandler([this] { Timer7_Timer(); });
  timer8_.SetInterval(kLineMs);
  timer8_.SetHandler([this] { Timer8_Timer(); });
}

bool OpcSource::Serves() const {
  return ProtocolOf(session_).driver == Driver::OpcItems;
}

void OpcSource::FollowProtocol() {
  if (Serves()) return ConnectItems();
  if (items_.IsConnected()) End();
}

void OpcSource::FollowList() {
  if (!Serves()) return;
  End();
  ConnectItems();
}

void OpcSource::ConnectItems() {
  if (shutDown_) return;
  TakeSeparators();
  if (!items_.IsConnected()) {
    Text1_.clear();
    items_.ConnectOPCItems(static_cast<std::size_t>(std::max(0, kMaxParameters - session_.NumberOfFormulae)));
  }
  CountItems();
  timer8_.SetEnabled(true);
  ShowPlug();
}

void OpcSource::TakeSeparators() {
  if (session_.Delimiter.empty()) session_.Delimiter = " ";
  if (session_.Terminator.empty()) session_.Terminator = "\r";
}

/// While a file plays the unit's own number of channels stands aside.
void OpcSource::CountItems() {
  const auto count = static_cast<std::int16_t>(items_.Count());
  std::int16_t& counted = session_.UnitParameters ? *session_.UnitParameters : session_.NumberOfParameters;
  const bool isNew = std::exchange(counted, count) != count;
  const Session::PerParameter<Parameter> before = session_.Parameters;
  FillUnnamedParameters(session_.Parameters, count, platform_.language);
  const bool isNamed = !std::equal(before.begin(), before.end(), session_.Parameters.begin(),
                                   [](const Parameter& a, const Parameter& b) { return a.name == b.name; });
  if ((isNew || isNamed) && onChannels) onChannels();
}

/// No box tells of an item that doesn't come: the data panel names it.
void OpcSource::Check() {
  const std::int64_t deadline = platform_.clock.Ticks() + kOpcMilliseconds;
  const auto isComplete = [this] {
    return items_.Line(platform_.clock.Now(), session_.Delimiter, session_.Terminator).has_value();
  };
  while (!isComplete() && !session_.StopRequested && !shutDown_ && platform_.clock.Ticks() < deadline)
    platform_.clock.WaitRound();
  Timer8_Timer();
}

void OpcSource::End() {
  Pause();
  timer8_.SetEnabled(false);
  items_.DisconnectOPCItems();
  Text1_.clear();
  session_.Data.sourceFault = {};
  view_.SetButtonImage("connect", image::ConnectOff);
  view_.SetButtonImage("disconnect", image::DisconnectOff);
}

void OpcSource::ShutDown() {
  shutDown_ = true;
  timer7_.SetEnabled(false);
  timer8_.SetEnabled(false);
  items_.DisconnectOPCItems();
}

void OpcSource::Timer8_Timer() {  // NOLINT(bugprone-virtual-near-miss)
  if (!items_.IsConnected()) return;
  if (const auto line = items_.Line(platform_.clock.Now(), session_.Delimiter, session_.Terminator)) Text1_ = *line;
  session_.Data.sourceFault = items_.TroubleText();
  ShowPlug();
}

void OpcSource::ShowPlug() {
  const OperatorText trouble = items_.TroubleText();
  const bool isWhole = items_.Count() > 0 && trouble.IsEmpty();
  view_.SetButtonImage("connect", isWhole ? image::ConnectOn : image::ConnectOff);
  view_.SetButtonImage("disconnect", isWhole ? image::DisconnectOn : image::DisconnectOff);
  view_.SetButtonToolTip("connect", text::OpcItemsConnected + std::to_string(items_.Count()));
  view_.SetButtonToolTip("disconnect", trouble.IsEmpty() ? OperatorText(text::OpcNoItems) : trouble);
}

void OpcSource::Timer7_Timer() {  // NOLINT(bugprone-virtual-near-miss)
  if (!timer7_.Enabled() || Text1_.empty() || !StatusIs(session_, text::StatusAcquiringData)) return;
  // A copy: the sample lets events run, and with them the next line.
  const std::string line = Text1_;
  road_.ProcessLine(line);
}

}  // namespace velk
