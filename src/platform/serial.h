#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace velk {

/// Handshake numbers as the settings hold them.
enum class Handshake { None = 0, XonXoff = 1, Rts = 2, RtsXonXoff = 3 };

struct SerialSettings {
  std::string device;  ///< path, "/dev/ttyUSB0"
  int baudRate = 9600;
  std::string parity = "N";  ///< N, E, O, M, S
  int dataBits = 8;
  std::string stopBits = "1";  ///< "1", "1.5", "2"
  Handshake handshake = Handshake::None;
  std::size_t readBuffer = 2048;  ///< bytes held for the program; further ones wait in the system's own buffer
};

/// A serial port. All settings are made before it opens.
class SerialPort {
 public:
  virtual ~SerialPort() = default;
  /// Raises DeviceUnavailable (no such device), PermissionDenied (with the group to join) or FileAlreadyOpen (in use elsewhere);
  /// the text names the device.
  virtual void Open(const SerialSettings& settings) = 0;
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  virtual std::size_t BytesWaiting() const = 0;
  /// At most `most` of the waiting bytes; never waits.
  virtual std::string Read(std::size_t most) = 0;
  virtual void Write(std::string_view bytes) = 0;
  virtual void ClearInput() = 0;

  /// Bytes have come. Called from the event loop, never nested.
  std::function<void()> onReadyRead;
  /// The device is gone; the port is closed already. Called once, from the event loop.
  std::function<void()> onHangUp;
};

/// Makes the ports; tests hand out fakes.
using SerialPortFactory = std::function<std::unique_ptr<SerialPort>()>;

/// A port on the machine's own devices.
std::unique_ptr<SerialPort> MakeSerialPort();

}  // namespace velk
