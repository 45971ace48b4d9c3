#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/errors.h"
#include "platform/ports/serial.h"

namespace velk {

/// An error that the board class raises: number n of its own list, the procedure, and a translated text.
class BoardError : public RuntimeError {
 public:
  BoardError(int n, OperatorText source, OperatorText text)
      : RuntimeError(static_cast<ErrorNumber>(0x80040000U + static_cast<std::uint32_t>(n)), std::move(text)),
        source_(std::move(source)) {}

  /// 0x80040000 + n.
  std::uint32_t Code() const { return static_cast<std::uint32_t>(Number()); }
  const OperatorText& Source() const { return source_; }

 private:
  OperatorText source_;
};

/// The board of an own unit, spoken to over the plain port.
class CAdc12nCom {
 public:
  /// `deviceOf` gives the device behind a port number.
  explicit CAdc12nCom(std::function<std::string(int)> deviceOf) : deviceOf_(std::move(deviceOf)) {}

  /// Opens the port at baud, no parity, 8 data bits, 1 stop bit; closes it first. Raises BoardError 1 for a missing
  /// port, 3 for a baud rate other than 2400, 4800, 9600 and 19200, 4 for a handshake outside 0 to 3, and what the
  /// port itself raises.
  void SetupComPort(SerialPort* port, std::int16_t portNumber, std::int16_t baud, std::int16_t handshake);

  /// Closes the port if SetupComPort had opened it.
  void CloseComPort();

 private:
  [[noreturn]] void Raise(int n, const MessageText& source, const MessageText& text) const;

  std::function<std::string(int)> deviceOf_;
  SerialPort* comPort_ = nullptr;
  bool portConfigured_ = false;
};

}  // namespace velk
