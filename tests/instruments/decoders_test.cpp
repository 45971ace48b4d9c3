#include "instruments/table/decoders.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "instruments/table/protocols.h"
#include "platform/settings/settings.h"
#include "support/byte_port.h"
#include "support/fake_clock.h"
#include "support/memory_folder.h"
#include "support/scripted_dialogs.h"

namespace velk {
namespace {

struct Row {
  std::string_view serialData;
  std::string_view checkedBy;  ///< the procedure of a delivered line
  std::string_view readBy;     ///< that of a tick
};

constexpr Row kRows[] = {
    {"formatted and at regular intervals", "NationalOilWell", "NationalOilWell"},
    {"National Oil Well PLC", "NOWPLC", ""},
    {"sent when requested", "", "Requested_data"},
    {"intermittent and by request", "", ""},
    {"via dll function call", "", ""},
    {"KESTA version 3", "Orben_ver_3", "Orben_ver_3"},
    {"KESTA version 4", "Orben_ver_3", "Orben_ver_3"},
    {"KESTA version 5", "Orben_ver_3", "Orben_ver_3"},
    {"LUMO version A", "Orben_ver_3", "Orben_ver_3"},
    {"LUMO version B", "Orben_ver_3", "Orben_ver_3"},
    {"S&S DAS 104", "", "Stewart_stevenson"},
    {"Data Taker a", "", "DataTaker_a"},
    {"Data Taker b", "", "DataTaker_b"},
    {"HPT - Honeywell eZtrend", "HPTHoneywellEZtrend", ""},
    {"ORBEN LUMO through HMI", "HPTHoneywellEZtrend", ""},
    {"Any Serial Data", "Any Serial Data", ""},
    {"OPC Server", "", ""},
    {"", "", ""},
};

TEST(DecoderTables, HaveADecoderForEachWayALineComes) {
  for (const Row& row : kRows) {
    Session session;
    session.SerialData = row.serialData;
    const Decoder& delivered = *ProtocolOf(session).decoder;
    EXPECT_EQ(delivered.check ? delivered.procedure : "", row.checkedBy) << row.serialData;
    const Decoder& polled = PolledDecoder(session);
    EXPECT_EQ(polled.read ? polled.procedure : "", row.readBy) << row.serialData;
  }
}

TEST(DecoderTables, KnowEveryProtocol) {
  for (const Protocol& protocol : Protocols())
    EXPECT_TRUE(std::any_of(std::begin(kRows), std::end(kRows),
                            [&](const Row& row) { return row.serialData == protocol.serialData; }));
}

TEST(DecoderTables, TakeTheOwnUnitForATickOnceItWasChosen) {
  Session session;
  session.IsOwnUnit = true;
  const std::string_view ownDecoders[] = {"S&S DAS 104", "formatted and at regular intervals"};
  for (const Row& row : kRows) {
    session.SerialData = row.serialData;
    const bool keepsIts =
        std::find(std::begin(ownDecoders), std::end(ownDecoders), row.serialData) != std::end(ownDecoders);
    EXPECT_EQ(PolledDecoder(session).procedure, keepsIts ? row.readBy : "Orben_ver_3") << row.serialData;
  }
  session.SerialData = "Data Taker a";
  EXPECT_EQ(ProtocolOf(session).decoder->check, nullptr);
}

class DecodersTest : public testing::Test {
 protected:
  DecodersTest() {
    session.NumberOfParameters = 2;
    session.Delimiter = " ";
    session.Terminator = "\r";
  }

  std::string Delivered(std::string_view serialData, std::string line) {
    session.SerialData = serialData;
    decoders.DecodeDelivered(line);
    return line;
  }
  std::string Polled(std::string_view serialData, std::string_view bytes) {
    session.SerialData = serialData;
    port.Restart(bytes);
    return decoders.ReadPolled(port);
  }

  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  test::ScriptedDialogs dialogs{gate};
  test::MemoryFolder folder;
  SettingsStore settings{folder.Path()};
  Platform platform{clock, gate, dialogs, settings, test::English()};
  Decoders decoders{session, platform};
  test::BytePort port;
};

TEST_F(DecodersTest, ADeliveredLineIsCheckedByItsProtocol) {
  EXPECT_EQ(Delivered("formatted and at regular intervals", "09:30:15 1 2\r"), "\r09:30:15 1 2\r");
  session.FormattedLineLength = 13;
  EXPECT_EQ(Delivered("formatted and at regular intervals", "09:30:15 1 2\r"), "09:30:15 1 2\r");
  EXPECT_EQ(Delivered("National Oil Well PLC", "09:30:15 1 2\r"), "\r09:30:15 1 2\r");
  EXPECT_EQ(Delivered("Any Serial Data", std::string("09:30\0:15 1\r", 12)), "09:30:15 1\r");
  for (const char* unchecked : {"S&S DAS 104", "via dll function call", "OPC Server", "Data Taker a"})
    EXPECT_EQ(Delivered(unchecked, "anything"), "anything");
}

TEST_F(DecodersTest, ThePagesAndTheOwnUnitsShareTheLengthOfTheLineBefore) {
  const std::string line = "09:30:15 1 2\r";
  EXPECT_EQ(Delivered("KESTA version 3", line), "\r\n" + line);
  EXPECT_EQ(Delivered("HPT - Honeywell eZtrend", line), line);
  EXPECT_EQ(Delivered("ORBEN LUMO through HMI", "09:30:16 1 22\r"), "\r\n09:30:16 1 22\r");
  EXPECT_EQ(Delivered("ORBEN LUMO through HMI", "09:30:17 1 23\r"), "09:30:17 1 23\r");
}

TEST_F(DecodersTest, PutsCrLfInFrontAlsoWhereTheTerminatorIsAnotherOne) {
  session.Terminator = "\n\r";
  EXPECT_EQ(Delivered("KESTA version 3", "09:30:15 1 2\n\r"), "\r\n09:30:15 1 2\n\r");
}

TEST_F(DecodersTest, ATickReadsThePortByItsProtocol) {
  EXPECT_EQ(Polled("S&S DAS 104", "\r09:30:15 1 2\r"), "09:30:15 1 2\r");
  EXPECT_EQ(Polled("Data Taker a", "09:30:15 1 2\n\r"), "09:30:15 1 2\n\r");
  EXPECT_EQ(Polled("Data Taker b", "Datataker 0 run 1Time=09:30:15\r\n1 5\r\n2 6\r\n\r\n"), "09:30:15 5 6 \r");
  session.FormattedLineLength = 14;
  EXPECT_EQ(Polled("formatted and at regular intervals", "09:30:15 1 2\n\r"), "09:30:15 1 2\n\r");
}

TEST_F(DecodersTest, ATickOfAProtocolThatIsNotPolledGivesNothing) {
  for (const char* serialData : {"via dll function call", "National Oil Well PLC", "Any Serial Data", "OPC Server"})
    EXPECT_EQ(Polled(serialData, "09:30:15 1 2\r"), "");
  EXPECT_EQ(port.Rest(), "09:30:15 1 2\r");
}

TEST_F(DecodersTest, TellsTheTimeOutOfARequestOnce) {
  dialogs.Expect("Time Out Error, check hardware settings", Answer::Ok);
  EXPECT_EQ(Polled("sent when requested", ""), "");
  EXPECT_TRUE(session.StopRequested);
  ASSERT_EQ(dialogs.shown.size(), 1U);
  EXPECT_EQ(dialogs.shown[0].title, "Time Out Error");
  EXPECT_EQ(dialogs.shown[0].icon, BoxIcon::Critical);
}

TEST_F(DecodersTest, ShowsAFaultOfThePortWithTheDecodersNameAndReadsAgainOnRetry) {
  const std::pair<const char*, const char*> names[] = {{"S&S DAS 104", " - Stewart_stevenson"},
                                                       {"Data Taker a", " - DataTaker_a"},
                                                       {"Data Taker b", " - DataTaker_b"},
                                                       {"sent when requested", " - Requested_data"},
                                                       {"formatted and at regular intervals", " - NationalOilWell"}};
  for (const auto& [serialData, name] : names) {
    port.open = false;
    dialogs.Expect(name, Answer::Cancel);
    EXPECT_EQ(Polled(serialData, "\r09:30:15 1 2\r"), "");
  }
  dialogs.Expect(" - Stewart_stevenson", Answer::Retry, [this] { port.open = true; });
  EXPECT_EQ(Polled("S&S DAS 104", "\r09:30:15 1 2\r"), "09:30:15 1 2\r");
}

}  // namespace
}  // namespace velk
