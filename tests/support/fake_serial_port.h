#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ports/serial.h"

namespace velk::test {

/// What a fake port and the test that drives it share. It outlives the port.
struct FakeDevice {
  bool open = false;
  std::vector<SerialSettings> openings;  ///< settings of each try to open
  std::function<void()> failOpen;        ///< throws while the device can't be opened
  std::vector<PortSetting> unsupported;
  std::string waiting;  ///< bytes that nobody has read yet
  std::string written;
  int reads = 0;
  SerialPort* port = nullptr;

  void Receive(std::string_view bytes) {
    if (!open) return;
    waiting += bytes;
    if (port->onBytes)
      port->onBytes();
    else if (port->onReadyRead)
      port->onReadyRead();
  }

  void HangUp() {
    open = false;
    waiting.clear();
    if (port->onHangUp) port->onHangUp();
  }

  /// From now on the device can't be opened.
  void Vanish() {
    failOpen = [this] { throw PortError(ErrorNumber::DeviceUnavailable, openings.back().device); };
  }
  void ComeBack() { failOpen = nullptr; }
};

class FakeSerialPort : public SerialPort {
 public:
  explicit FakeSerialPort(FakeDevice& device) : device_(device) { device_.port = this; }

  void Open(const SerialSettings& settings) override {
    Close();
    device_.openings.push_back(settings);
    if (device_.failOpen) device_.failOpen();
    device_.open = true;
  }
  std::vector<PortSetting> Unsupported() const override { return device_.unsupported; }
  void Close() override {
    device_.open = false;
    device_.waiting.clear();
  }
  bool IsOpen() const override { return device_.open; }
  std::size_t BytesWaiting() const override { return device_.waiting.size(); }
  std::string Read(std::size_t most) override {
    ++device_.reads;
    std::string bytes = device_.waiting.substr(0, most);
    device_.waiting.erase(0, bytes.size());
    return bytes;
  }
  std::string Peek() const override { return device_.waiting; }
  void Write(std::string_view bytes) override { device_.written += bytes; }
  void ClearInput() override { device_.waiting.clear(); }

 private:
  FakeDevice& device_;
};

}  // namespace velk::test
