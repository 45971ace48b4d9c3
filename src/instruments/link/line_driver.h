#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "instruments/reading/line_framing.h"
#include "platform/loop/clock.h"
#include "platform/loop/gate.h"
#include "platform/ports/serial.h"

namespace velk {

struct LineDriverSettings {
  SerialSettings port;           ///< BaudRate, DataBits, Parity, StopBits, Handshake and the device of PortNumber
  int portNumber = 1;            ///< as the operator chose it
  int retryMilliseconds = 1000;  ///< between two tries to reach a device that is gone
  std::string terminator = "\r\n";
  int theTimeOut = 5;  ///< sampling intervals without an answer after which a wait for the unit ends
};

/// The line driver `ODataCom`: it reads a serial port and hands over one line at a time, in the order in which they
/// came.
///
/// Lines wait in a bounded queue. They are delivered from the event loop while the gate is open, and the gate is shut
/// during the handler, so that events run by a sample never start the next one. While the queue is full the port isn't
/// read: the bytes wait in the system, none is lost and memory stays flat.
class LineDriver {
 public:
  /// Bytes that the queue holds before the port waits.
  static constexpr std::size_t kQueueBytes = 4 * LineFraming::kLongestLine;

  LineDriver(Clock& clock, Gate& gate, std::unique_ptr<SerialPort> port);
  ~LineDriver();
  LineDriver(const LineDriver&) = delete;
  LineDriver& operator=(const LineDriver&) = delete;

  /// Opens with these settings; raises what the port raises. Closes first.
  void Open(const LineDriverSettings& settings);
  /// Closes the port only: whole lines that wait stay; a half line is dropped.
  void ClosePort();
  /// Closes the port and opens it again at this path, with the same settings otherwise.
  void Reopen(const std::string& device);
  /// Closes and empties the queue.
  void Close();
  bool IsOpen() const { return port_->IsOpen(); }
  /// Writes to the port that is open.
  void Write(std::string_view bytes) { port_->Write(bytes); }
  /// Which port settings the device does not have.
  std::vector<PortSetting> Unsupported() const { return port_->Unsupported(); }

  /// The settings of the last Open, with the device of the last Reopen.
  const LineDriverSettings& Settings() const { return settings_; }
  /// Whether a whole line waits to be delivered.
  bool LineWaits() const { return framing_.HasLine(); }

  /// Bytes that have come since the last Open.
  std::int64_t BytesHeard() const { return bytesHeard_; }

  /// Goes on delivering; for Gate::onOpened.
  void GateOpened() { PostDelivery(); }

  /// One received line, terminator included.
  std::function<void(const std::string& line)> onDataReady;
  /// The device is gone and the port closed; whole lines that wait are still delivered.
  std::function<void()> onHangUp;

 private:
  void Fill();
  void Read();
  void PostDelivery();
  void Deliver();

  Clock& clock_;
  Gate& gate_;
  std::unique_ptr<SerialPort> port_;
  LineDriverSettings settings_;
  LineFraming framing_;
  std::int64_t bytesHeard_ = 0;
  bool deliveryPosted_ = false;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace velk
