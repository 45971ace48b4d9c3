#include "platform/ports/serial.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <QSerialPort>
#include <cerrno>
#include <cstdlib>

#include "platform/ports/dead_lock_file.h"
#include "platform/ports/port_support.h"

namespace velk {

PortError::PortError(ErrorNumber number, std::string device, std::string group)
    : RuntimeError(number, ErrorText(number) + ": " + device), device_(std::move(device)), group_(std::move(group)) {
}

namespace {

QSerialPort::Parity ParityOf(const std::string& letter) {
  if (letter == "N") return QSerialPort::NoParity;
  if (letter == "E") return QSerialPort::EvenParity;
  if (letter == "O") return QSerialPort::OddParity;
  if (letter == "M") return QSerialPort::MarkParity;
  if (letter == "S") return QSerialPort::SpaceParity;
  throw RuntimeError(ErrorNumber::InvalidArgument);
}

QSerialPort::DataBits DataBitsOf(int bits) {
  if (bits < 5 || bits > 8) throw RuntimeError(ErrorNumber::InvalidArgument);
  return static_cast<QSerialPort::DataBits>(bits);
}

QSerialPort::StopBits StopBitsOf(const std::string& text) {
  if (text == "1") return QSerialPort::OneStop;
  // The system knows one bit for both: with 5 data bits it makes 1.5, otherwise 2.
  if (text == "1.5" || text == "2") return QSerialPort::TwoStop;
  throw RuntimeError(ErrorNumber::InvalidArgument);
}

QSerialPort::FlowControl FlowControlOf(Handshake handshake) {
  switch (handshake) {
    case Handshake::None:
      return QSerialPort::NoFlowControl;
    case Handshake::XonXoff:
      return QSerialPort::SoftwareControl;
    case Handshake::Rts:
    case Handshake::RtsXonXoff:
      return QSerialPort::HardwareControl;
  }
  throw RuntimeError(ErrorNumber::InvalidArgument);
}

/// The real path behind links, so that two names of one device lock each other out.
std::string RealPath(const std::string& device) {
  char* const real = realpath(device.c_str(), nullptr);
  if (real == nullptr) return device;
  std::string path = real;
  std::free(real);
  return path;
}

std::string GroupOf(const std::string& device) {
  struct stat status = {};
  if (stat(device.c_str(), &status) != 0) return {};
  const group* const entry = getgrgid(status.st_gid);
  return entry != nullptr ? entry->gr_name : std::to_string(status.st_gid);
}

/// Why the device did not open. Looked at afterwards only: opening a port just to see raises its lines, and some units
/// restart on that.
PortError WhyNotOpen(const std::string& device, QSerialPort::SerialPortError error) {
  if (faccessat(AT_FDCWD, device.c_str(), R_OK | W_OK, AT_EACCESS) != 0) {
    if (errno == EACCES || errno == EPERM || errno == EROFS)
      return {ErrorNumber::PermissionDenied, device, GroupOf(device)};
    return {ErrorNumber::DeviceUnavailable, device};
  }
  struct stat status = {};
  if (stat(device.c_str(), &status) != 0 || !S_ISCHR(status.st_mode)) return {ErrorNumber::DeviceUnavailable, device};
  // The device may be used, so it is the lock that somebody else holds.
  if (error == QSerialPort::PermissionError) return {ErrorNumber::FileAlreadyOpen, device};
  if (error == QSerialPort::UnsupportedOperationError) return {ErrorNumber::PortInvalid, device};
  return {ErrorNumber::DeviceUnavailable, device};
}

/// Opens the port. A lock that a killed program has left is no reason not to.
bool OpenFreeDevice(QSerialPort& port, const std::string& device) {
  if (port.open(QIODevice::ReadWrite)) return true;
  return port.error() == QSerialPort::PermissionError && RemoveDeadLockFile(RealPath(device)) &&
         port.open(QIODevice::ReadWrite);
}

bool MeansGone(QSerialPort::SerialPortError error) {
  return error == QSerialPort::ReadError || error == QSerialPort::ResourceError ||
         error == QSerialPort::DeviceNotFoundError;
}

/// Both handshakes at once; the toolkit's setting holds one.
void AddXonXoff(int descriptor) {
  termios mode = {};
  if (tcgetattr(descriptor, &mode) != 0) return;
  mode.c_iflag |= IXON | IXOFF;
  tcsetattr(descriptor, TCSANOW, &mode);
}

class DevicePort : public SerialPort {
 public:
  ~DevicePort() override { Close(); }

  void Open(const SerialSettings& settings) override;
  std::vector<PortSetting> Unsupported() const override { return unsupported_; }
  void Close() override;
  bool IsOpen() const override { return port_ != nullptr; }
  std::size_t BytesWaiting() const override { return port_ ? static_cast<std::size_t>(port_->bytesAvailable()) : 0; }
  std::string Read(std::size_t most) override;
  std::string Peek() const override {
    return port_ ? port_->peek(port_->bytesAvailable()).toStdString() : std::string();
  }
  void Write(std::string_view bytes) override;
  void ClearInput() override {
    if (port_) port_->clear(QSerialPort::Input);
  }
  std::size_t BytesToSend() const override { return port_ ? static_cast<std::size_t>(port_->bytesToWrite()) : 0; }

 private:
  void Watch();
  void PostWhileOpen(std::function<void()> task);
  void Announce();
  void TellBytes();
  void HangUp();

  std::unique_ptr<QSerialPort> port_;
  std::vector<PortSetting> unsupported_;
  std::shared_ptr<char> whileOpen_;  ///< lives as long as one opening
  bool announced_ = false;
};

void DevicePort::Open(const SerialSettings& settings) {
  Close();
  auto port = std::make_unique<QSerialPort>();
  port->setPortName(QString::fromLocal8Bit(RealPath(settings.device)));
  if (settings.baudRate <= 0) throw RuntimeError(ErrorNumber::InvalidArgument);
  port->setBaudRate(settings.baudRate);
  port->setDataBits(DataBitsOf(settings.dataBits));
  port->setParity(ParityOf(settings.parity));
  port->setStopBits(StopBitsOf(settings.stopBits));
  port->setFlowControl(FlowControlOf(settings.handshake));
  port->setReadBufferSize(static_cast<qint64>(settings.readBuffer));
  if (!OpenFreeDevice(*port, settings.device)) throw WhyNotOpen(settings.device, port->error());
  if (settings.handshake == Handshake::RtsXonXoff) AddXonXoff(port->handle());
  unsupported_ = UnsupportedSettings(port->handle(), settings);
  port_ = std::move(port);
  Watch();
}

/// Reading and closing are posted. A handler that runs events inside the port's own signal would mute it, and after a
/// hang-up the signal would come hundreds of thousands of times.
void DevicePort::Watch() {
  announced_ = false;
  whileOpen_ = std::make_shared<char>();
  QSerialPort* const port = port_.get();
  QObject::connect(port, &QSerialPort::readyRead, port, [this] {
    if (onBytes) return onBytes();
    if (announced_) return;
    announced_ = true;
    PostWhileOpen([this] { Announce(); });
  });
  QObject::connect(port, &QSerialPort::errorOccurred, port, [this, port](QSerialPort::SerialPortError error) {
    if (!MeansGone(error)) return;
    port->disconnect();
    PostWhileOpen([this] { HangUp(); });
  });
}

/// The task is forgotten once this opening has ended.
void DevicePort::PostWhileOpen(std::function<void()> task) {
  QMetaObject::invokeMethod(
      port_.get(),
      [task = std::move(task), open = std::weak_ptr<char>(whileOpen_)] {
        if (!open.expired()) task();
      },
      Qt::QueuedConnection);
}

void DevicePort::Announce() {
  announced_ = false;
  TellBytes();
}

void DevicePort::TellBytes() {
  if (onBytes)
    onBytes();
  else if (onReadyRead)
    onReadyRead();
}

void DevicePort::HangUp() {
  const std::weak_ptr<char> open = whileOpen_;
  if (BytesWaiting() > 0) TellBytes();
  if (open.expired()) return;  // closed or opened anew by the handler
  Close();
  if (onHangUp) onHangUp();
}

void DevicePort::Close() {
  if (!port_) return;
  whileOpen_.reset();
  port_->disconnect();
  port_->close();
  // Not deleted here: a posted call of this very port may be what runs now.
  port_.release()->deleteLater();
}

std::string DevicePort::Read(std::size_t most) {
  if (!port_) return {};
  std::string bytes(std::min(most, BytesWaiting()), '\0');
  const qint64 count = port_->read(bytes.data(), static_cast<qint64>(bytes.size()));
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

void DevicePort::Write(std::string_view bytes) {
  if (!port_) throw RuntimeError(ErrorNumber::PortNotOpen);
  port_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

}  // namespace

std::unique_ptr<SerialPort> MakeSerialPort() {
  return std::make_unique<DevicePort>();
}

}  // namespace velk
