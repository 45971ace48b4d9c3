#include "instruments/board/board.h"

#include <gtest/gtest.h>

#include "instruments/board_rig.h"

namespace velk {
namespace {

struct Board : test::BoardRig {
  Board() {
    board.CloseComPort();
    device.openings.clear();
  }
  void ExpectSetupError(std::uint32_t code, const std::string& text, SerialPort* which, std::int16_t baud,
                        std::int16_t handshake) {
    try {
      board.SetupComPort(which, 1, baud, handshake);
      ADD_FAILURE() << text;
    } catch (const BoardError& error) {
      EXPECT_EQ(error.Code(), code);
      EXPECT_EQ(error.Source().English(), "SetupComPort");
      EXPECT_EQ(error.what(), text);
    }
  }
};

TEST_F(Board, OpensThePortWithItsOwnLineSettings) {
  board.SetupComPort(&port, 3, 9600, 2);
  ASSERT_EQ(device.openings.size(), 1U);
  const SerialSettings& settings = device.openings[0];
  EXPECT_EQ(settings.device, "/dev/port3");
  EXPECT_EQ(settings.baudRate, 9600);
  EXPECT_EQ(settings.parity, "N");
  EXPECT_EQ(settings.dataBits, 8);
  EXPECT_EQ(settings.stopBits, "1");
  EXPECT_EQ(settings.handshake, Handshake::Rts);
  EXPECT_EQ(settings.readBuffer, 2048U);
  EXPECT_TRUE(port.IsOpen());
}

TEST_F(Board, TakesTheFourBaudRatesAndTheFourHandshakes) {
  for (const std::int16_t baud : std::initializer_list<std::int16_t>{2400, 4800, 9600, 19200})
    for (const std::int16_t handshake : std::initializer_list<std::int16_t>{0, 1, 2, 3})
      EXPECT_NO_THROW(board.SetupComPort(&port, 1, baud, handshake));
  EXPECT_EQ(device.openings.size(), 16U);
}

TEST_F(Board, AMissingPortIsError1) {
  ExpectSetupError(0x80040001U, "invalid MSComm is supplied.", nullptr, 9600, 0);
}

TEST_F(Board, AnyOtherBaudRateIsError3) {
  for (const std::int16_t baud : std::initializer_list<std::int16_t>{0, -1, 110, 1200, 2401, 14400, 32767})
    ExpectSetupError(0x80040003U,
                     "Invalid Boud rate is supplied. Only 2400, 4800, 9600, 19200 and 38400 are supported.", &port,
                     baud, 0);
}

TEST_F(Board, AHandshakeOutside0To3IsError4) {
  for (const std::int16_t handshake : std::initializer_list<std::int16_t>{-1, 4, 100})
    ExpectSetupError(0x80040004U, "Invalid hand shaking is supplied.", &port, 9600, handshake);
}

TEST_F(Board, ClosesAnOpenPortBeforeItLooksAtTheArguments) {
  board.SetupComPort(&port, 1, 9600, 0);
  EXPECT_THROW(board.SetupComPort(&port, 1, 1, 0), BoardError);
  EXPECT_FALSE(port.IsOpen());
}

TEST_F(Board, CloseComPortClosesWhatSetupOpened) {
  board.SetupComPort(&port, 1, 9600, 0);
  board.CloseComPort();
  EXPECT_FALSE(port.IsOpen());
}

TEST_F(Board, CloseComPortLeavesAPortAloneThatItDidNotSetUp) {
  EXPECT_NO_THROW(board.CloseComPort());
  port.Open({});
  board.CloseComPort();
  EXPECT_TRUE(port.IsOpen());
}

TEST_F(Board, AfterCloseComPortThePortIsNoLongerTheBoards) {
  board.SetupComPort(&port, 1, 9600, 0);
  board.CloseComPort();
  port.Open({});
  board.CloseComPort();
  EXPECT_TRUE(port.IsOpen());
}

TEST_F(Board, AFailureToOpenComesThrough) {
  device.failOpen = [] { throw PortError(ErrorNumber::FileAlreadyOpen, "/dev/port1"); };
  EXPECT_THROW(board.SetupComPort(&port, 1, 9600, 0), PortError);
}

}  // namespace
}  // namespace velk
