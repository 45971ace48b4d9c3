#include "instruments/board.h"

namespace velk {

namespace {

constexpr std::size_t kInputBuffer = 2048;

bool IsBoardBaudRate(std::int16_t baud) {
  return baud == 2400 || baud == 4800 || baud == 9600 || baud == 19200;
}

}  // namespace

void CAdc12nCom::Raise(int n, MessageId source, MessageId text) const {
  throw BoardError(n, translator_.Translate(source), translator_.Translate(text));
}

void CAdc12nCom::SetupComPort(SerialPort* port, std::int16_t portNumber, std::int16_t baud, std::int16_t handshake) {
  if (port == nullptr) Raise(1, MessageId::SourceSetupComPort, MessageId::InvalidPortObject);
  comPort_ = port;
  if (comPort_->IsOpen()) comPort_->Close();
  if (!IsBoardBaudRate(baud)) Raise(3, MessageId::SourceSetupComPort, MessageId::InvalidBaudRate);
  if (handshake < 0 || handshake > 3) Raise(4, MessageId::SourceSetupComPort, MessageId::InvalidHandshake);

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
