#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/errors.h"

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

  bool operator==(const SerialSettings&) const = default;
};

/// A setting of the port that a device may be without.
enum class PortSetting { DataBits, Parity, StopBits, ModemLines };

/// A port that could not be opened. What it needs to be told in the operator's language is kept apart from the text.
class PortError : public RuntimeError {
 public:
  /// `number` is DeviceUnavailable (no such device, or none behind it), PermissionDenied, FileAlreadyOpen (in use
  /// elsewhere) or PortInvalid (the device refuses the settings). `group` owns the device; only for PermissionDenied.
  PortError(ErrorNumber number, std::string device, std::string group = {});

  const std::string& Device() const { return device_; }
  const std::string& Group() const { return group_; }

 private:
  std::string device_;
  std::string group_;
};

/// A serial port. All settings are made before it opens.
class SerialPort {
 public:
  virtual ~SerialPort() = default;
  /// Closes first what is open. Raises PortError, or InvalidArgument for settings that no port has. What the device is
  /// without (mark parity, the modem lines of a pseudo-terminal) is no failure: see Unsupported.
  virtual void Open(const SerialSettings& settings) = 0;
  /// Which settings of the last Open the device does not have; the port works with the others.
  virtual std::vector<PortSetting> Unsupported() const { return {}; }
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  virtual std::size_t BytesWaiting() const = 0;
  /// At most `most` of the waiting bytes; never waits.
  virtual std::string Read(std::size_t most) = 0;
  /// All that waits; it stays there.
  virtual std::string Peek() const = 0;
  virtual void Write(std::string_view bytes) = 0;
  virtual void ClearInput() = 0;
  /// Bytes that were written and that the system has not taken yet; closing the port drops them.
  virtual std::size_t BytesToSend() const { return 0; }

  /// Bytes have come. Called from the event loop, never from inside the port's own work, so a handler may run events:
  /// what comes meanwhile is announced again.
  std::function<void()> onReadyRead;
  /// The same for a handler that only reads and runs no events: it is called at once, in place of onReadyRead.
  std::function<void()> onBytes;
  /// The device is gone. What it had sent was announced before; the port is closed already. Called once, from the
  /// event loop.
  std::function<void()> onHangUp;
};

/// Makes the ports; tests hand out fakes.
using SerialPortFactory = std::function<std::unique_ptr<SerialPort>()>;

/// A port on the machine's own devices.
std::unique_ptr<SerialPort> MakeSerialPort();

}  // namespace velk
