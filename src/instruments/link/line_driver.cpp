#include "instruments/link/line_driver.h"

namespace velk {

namespace {

constexpr std::size_t kReadAtOnce = 4096;

}  // namespace

LineDriver::LineDriver(Clock& clock, Gate& gate, std::unique_ptr<SerialPort> port)
    : clock_(clock), gate_(gate), port_(std::move(port)) {
  port_->onBytes = [this] { Fill(); };
  port_->onHangUp = [this] {
    framing_.DropUnfinished();
    if (onHangUp) onHangUp();
  };
}

LineDriver::~LineDriver() {
  port_->onBytes = nullptr;
  port_->onHangUp = nullptr;
}

void LineDriver::Open(const LineDriverSettings& settings) {
  Close();
  settings_ = settings;
  bytesHeard_ = 0;
  framing_.Reset(settings.terminator);
  port_->Open(settings.port);
}

void LineDriver::ClosePort() {
  port_->Close();
  framing_.DropUnfinished();
}

void LineDriver::Reopen(const std::string& device) {
  ClosePort();
  settings_.port.device = device;
  port_->Open(settings_.port);
}

void LineDriver::Close() {
  port_->Close();
  framing_.Reset(settings_.terminator);
}

void LineDriver::Fill() {
  Read();
  PostDelivery();
}

/// Reads what there is room for. Called again whenever a line has left, so that bytes that the port announced while the
/// queue was full are fetched.
void LineDriver::Read() {
  while (framing_.Size() < kQueueBytes && port_->BytesWaiting() > 0) {
    const std::string bytes = port_->Read(kReadAtOnce);
    if (bytes.empty()) break;
    bytesHeard_ += static_cast<std::int64_t>(bytes.size());
    framing_.Append(bytes);
  }
}

void LineDriver::PostDelivery() {
  if (deliveryPosted_ || !gate_.IsOpen() || !framing_.HasLine()) return;
  deliveryPosted_ = true;
  clock_.Post([this, alive = std::weak_ptr<char>(alive_)] {
    if (alive.expired()) return;
    deliveryPosted_ = false;
    Deliver();
  });
}

void LineDriver::Deliver() {
  // Meanwhile the gate may have been shut or the queue emptied.
  if (!gate_.IsOpen() || !framing_.HasLine()) return;
  const std::string line = framing_.TakeLine();
  Read();
  const std::weak_ptr<char> alive = alive_;
  {
    const GateState shut(gate_, GateState::Shut);
    if (onDataReady) onDataReady(line);
  }
  if (!alive.expired()) PostDelivery();
}

}  // namespace velk
