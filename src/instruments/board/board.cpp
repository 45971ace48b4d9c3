#include "instruments/board/board.h"
#include "instruments/texts.h"

namespace velk {

namespace {

constexpr std::size_t kInputBuffer = 2048;

bool IsBoardBaudRate(std::int16_t baud) {
  return baud == 2400 || baud == 4800 || baud == 9600 || baud == 19200;
}

}  // namespace

void CAdc12nCom::Raise(int n, const MessageText& source, const MessageText& text) const {
  throw BoardError(n, source, text);
}

void CAdc12nCom::SetupComPort(SerialPort* port, std::int16_t portNumber, std::int16_t baud, std::int16_t handshake) {
  if (port == nullptr) Raise(1, text::SourceSetupComPort, text::InvalidPortObject);
  comPort_ = port;
  if (comPort_->IsOpen()) comPort_->Close();
  if (!IsBoardBaudRate(baud)) Raise(3, text::SourceSetupComPort, text::InvalidBaudRate);
  if (handshake < 0 || handshake > 3) Raise(4, text::SourceSetupComPort, text::InvalidHandshake);

  SerialSettings settings;
  settings.device = deviceOf_(portNumber);
  settings.baudRate = baud;
  settings.handshake = static_cast<Handshake>(handshake);
  settings.readBuffer = kInputBuffer;
  comPort_->Open(settings);
  portConfigured_ = true;
}

void CAdc12nCom::CloseComPort() {
  if (!portConfigured_ || !comPort_->IsOpen()) return;
  comPort_->Close();
  portConfigured_ = false;
}

}  // namespace velk
