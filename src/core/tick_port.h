#pragma once

#include "platform/dialogs/dialogs.h"
#include "platform/ports/serial.h"

namespace velk {

/// The plain port as one tick has it. Where a later tick takes the port over, the earlier one is left with a port that
/// is closed: what it had read so far is not joined to what comes later. So is a tick above a box that has been
/// answered: whoever showed the box, perhaps to end the program, waits for the tick to leave.
class TickPort : public SerialPort {
 public:
  /// `holder` tells which tick has the port, `box` stands for the boxes below this tick, null where there is none. All
  /// outlive this.
  TickPort(SerialPort& port, const TickPort*& holder, const Dialogs* box) : port_(port), holder_(holder), box_(box) {
    holder_ = this;
  }
  ~TickPort() override {
    if (IsHeld()) holder_ = nullptr;
  }
  TickPort(const TickPort&) = delete;
  TickPort& operator=(const TickPort&) = delete;

  /// No other tick has taken the port over.
  bool IsHeld() const { return holder_ == this; }

  void Open(const SerialSettings& settings) override {
    if (IsHeld()) port_.Open(settings);
  }
  std::vector<PortSetting> Unsupported() const override { return port_.Unsupported(); }
  void Close() override {
    if (IsHeld()) port_.Close();
  }
  bool IsOpen() const override { return IsHeld() && port_.IsOpen() && !(box_ != nullptr && box_->TopIsAnswered()); }
  std::size_t BytesWaiting() const override { return IsHeld() ? port_.BytesWaiting() : 0; }
  std::string Read(std::size_t most) override { return IsHeld() ? port_.Read(most) : std::string(); }
  std::string Peek() const override { return IsHeld() ? port_.Peek() : std::string(); }
  void Write(std::string_view bytes) override {
    if (!IsHeld()) throw RuntimeError(ErrorNumber::PortNotOpen);
    port_.Write(bytes);
  }
  void ClearInput() override {
    if (IsHeld()) port_.ClearInput();
  }

 private:
  SerialPort& port_;
  const TickPort*& holder_;
  const Dialogs* box_;
};

}  // namespace velk
