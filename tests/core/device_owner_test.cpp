// The line driver and the plain port never hold the device at once.

#include <gtest/gtest.h>

#include "core/polled.h"

namespace velk {
namespace {

class EachProtocol : public test::Polled, public testing::WithParamInterface<std::tuple<int, bool>> {
 protected:
  EachProtocol() {
    const auto heldBy = [](const test::FakeDevice& other) {
      return [&other] {
        if (other.open) throw PortError(ErrorNumber::FileAlreadyOpen, "/dev/ttyS0");
      };
    };
    rig.plainPort.failOpen = heldBy(rig.linePort);
    rig.linePort.failOpen = heldBy(rig.plainPort);
  }

  bool IsTicked() const {
    const std::string_view name = rig.session.SerialData;
    if (name == protocol::Formatted || name == protocol::Intermittent) return true;
    // The line driver holds the device of an own unit.
    return !rig.session.IsOwnUnit && (name == protocol::SentWhenRequested || name == protocol::Das104 ||
                                      name == protocol::DataTakerA || name == protocol::DataTakerB);
  }
};

TEST_P(EachProtocol, LetsOneOfBothPortsHoldTheDeviceFromConnectToStop) {
  const auto& [place, behindAnOwnUnit] = GetParam();
  Use(Protocols()[static_cast<std::size_t>(place)].serialData);
  rig.session.IsOwnUnit = behindAnOwnUnit;
  SetProtocolConstants(rig.session);
  rig.link.SetODataCom();
  rig.pages->page = "";
  if (rig.session.SerialData == protocol::DllFunctionCall) rig.dialogs.Expect("no driver", Answer::Ok);
  rig.Connect();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready to Acquire");
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data");
  EXPECT_FALSE(rig.plainPort.open && rig.linePort.open);
  EXPECT_EQ(rig.timers.Timer1->Enabled(), IsTicked()) << "where the plain port is read or watched";
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Paused");
  rig.acquisition.mnuAcquireStart_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Acquiring Data");
  rig.acquisition.mnuAcquireStop_Click();
  EXPECT_EQ(rig.session.CurrentStatus.english, "Ready");
  EXPECT_FALSE(rig.plainPort.open);
  rig.link.SetODataCom();  // as behind the dialogs of the serial port
}

INSTANTIATE_TEST_SUITE_P(Places, EachProtocol, testing::Combine(testing::Range(0, 16), testing::Bool()));

}  // namespace
}  // namespace velk
