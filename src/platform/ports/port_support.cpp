#include "platform/ports/port_support.h"

#include <sys/ioctl.h>
#include <termios.h>

namespace velk {

namespace {

constexpr tcflag_t kParityBits = PARENB | PARODD | CMSPAR;

bool HasDataBits(tcflag_t mode, int bits) {
  constexpr tcflag_t kSizes[] = {CS5, CS6, CS7, CS8};
  return (mode & CSIZE) == kSizes[bits - 5];
}

bool HasParity(tcflag_t mode, const std::string& parity) {
  if (parity == "N") return (mode & PARENB) == 0;
  if (parity == "E") return (mode & kParityBits) == PARENB;
  if (parity == "O") return (mode & kParityBits) == (PARENB | PARODD);
  if (parity == "S") return (mode & kParityBits) == (PARENB | CMSPAR);
  return (mode & kParityBits) == kParityBits;
}

bool HasStopBits(tcflag_t mode, const SerialSettings& settings) {
  const bool more = (mode & CSTOPB) != 0;
  if (settings.stopBits == "1") return !more;
  // One bit stands for both: it means 1.5 where a character has 5 bits, and 2 otherwise.
  return more && (settings.stopBits == "2" || settings.dataBits == 5);
}

bool HasModemLines(int descriptor) {
  int lines = 0;
  return ioctl(descriptor, TIOCMGET, &lines) == 0;
}

}  // namespace

std::vector<PortSetting> UnsupportedSettings(int descriptor, const SerialSettings& settings) {
  termios mode = {};
  if (tcgetattr(descriptor, &mode) != 0) return {};
  const bool needsModemLines = settings.handshake == Handshake::Rts || settings.handshake == Handshake::RtsXonXoff;
  std::vector<PortSetting> unsupported;
  if (!HasDataBits(mode.c_cflag, settings.dataBits)) unsupported.push_back(PortSetting::DataBits);
  if (!HasParity(mode.c_cflag, settings.parity)) unsupported.push_back(PortSetting::Parity);
  if (!HasStopBits(mode.c_cflag, settings)) unsupported.push_back(PortSetting::StopBits);
  if (needsModemLines && !HasModemLines(descriptor)) unsupported.push_back(PortSetting::ModemLines);
  return unsupported;
}

}  // namespace velk
