#include "line.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace sim {

namespace {

volatile std::sig_atomic_t ending = 0;

constexpr std::size_t kChunk = 16;  // bytes sent at once: 8 ms at 19200 baud
constexpr double kBitsPerByte = 10;
constexpr double kArrival = 0.1;
constexpr double kLongestDrain = 2;
constexpr int kLookMilliseconds = 20;  // how often a wait looks at the signals

[[noreturn]] void Fail(const std::string& what) {
  std::perror(what.c_str());
  std::exit(1);
}

/// Raw from the start, so that nothing is echoed or changed before the reader has made its own settings.
void MakeRaw(int descriptor) {
  termios mode{};
  if (tcgetattr(descriptor, &mode) != 0) return;
  cfmakeraw(&mode);
  tcsetattr(descriptor, TCSANOW, &mode);
}

void PointLink(const std::string& link, const std::string& device) {
  const std::string fresh = link + ".new";
  unlink(fresh.c_str());
  if (symlink(device.c_str(), fresh.c_str()) != 0 || rename(fresh.c_str(), link.c_str()) != 0) Fail(link);
}

}  // namespace

double Seconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

bool Ending() {
  return ending != 0;
}

void CatchSignals() {
  struct sigaction action = {};
  action.sa_handler = [](int) { ending = 1; };
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGINT, &action, nullptr);
  const pid_t parent = getppid();
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) ending = 1;
}

bool RestUntil(double seconds) {
  for (double left = seconds - Seconds(); left > 0 && !Ending(); left = seconds - Seconds()) {
    const double rest = std::min(left, kLookMilliseconds / 1000.0);
    timespec time{0, static_cast<long>(rest * 1e9)};
    nanosleep(&time, nullptr);
  }
  return !Ending();
}

Line::Line(std::string link, int baud) : link_(std::move(link)), baud_(baud) {
}

Line::~Line() {
  Unplug();
}

void Line::Plug() {
  master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) Fail("pseudo-terminal");
  device_ = ptsname(master_);
  // Opened and closed once: from then on the master tells whether somebody has the other end.
  const int other = open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (other < 0) Fail(device_);
  MakeRaw(other);
  close(other);
  if (!link_.empty()) PointLink(link_, device_);
}

void Line::Unplug() {
  if (master_ < 0) return;
  // The link first: the system may give the device's number to somebody else.
  if (!link_.empty()) unlink(link_.c_str());
  close(master_);
  master_ = -1;
}

void Line::Drain() const {
  const int other = open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  const double end = Seconds() + kLongestDrain;
  // The rest comes first: what has just been written is not counted yet. A reader that has the device for itself can't
  // be looked at, so it is only given that time.
  for (int unread = 1; unread > 0 && RestUntil(Seconds() + kArrival) && Seconds() < end;)
    if (other < 0 || ioctl(other, FIONREAD, &unread) != 0) unread = 0;
  if (other >= 0) close(other);
}

bool Line::HasReader() const {
  pollfd state{master_, POLLOUT, 0};
  return poll(&state, 1, 0) >= 0 && (state.revents & POLLHUP) == 0;
}

bool Line::StandsAt(int baud, bool handshake) const {
  termios mode{};
  if (tcgetattr(master_, &mode) != 0) return false;
  speed_t speed = B0;
  for (const auto& [rate, code] :
       {std::pair(2400, B2400), std::pair(4800, B4800), std::pair(9600, B9600), std::pair(19200, B19200)})
    if (rate == baud) speed = code;
  return cfgetospeed(&mode) == speed && (!handshake || (mode.c_cflag & CRTSCTS) != 0);
}

std::string Line::Receive() const {
  std::string received;
  char bytes[256];
  for (ssize_t count = 0; (count = read(master_, bytes, sizeof bytes)) > 0;)
    received.append(bytes, static_cast<std::size_t>(count));
  return received;
}

bool Line::SendChunk(const char* bytes, std::size_t count) {
  while (count > 0) {
    if (Ending() || !HasReader()) return false;
    const ssize_t sent = write(master_, bytes, count);
    if (sent > 0) {
      bytes += sent;
      count -= static_cast<std::size_t>(sent);
      continue;
    }
    if (errno != EAGAIN && errno != EINTR) return false;
    pollfd state{master_, POLLOUT, 0};
    poll(&state, 1, kLookMilliseconds);
  }
  return true;
}

/// Commands of the reader are not answered in run mode.
bool Line::Send(const std::string& bytes) {
  DropInput();
  return Transmit(bytes);
}

bool Line::Transmit(const std::string& bytes) {
  const std::size_t chunk = baud_ > 0 ? kChunk : bytes.size();
  freeAt_ = std::max(freeAt_, Seconds());
  for (std::size_t at = 0; at < bytes.size(); at += chunk) {
    const std::size_t count = std::min(chunk, bytes.size() - at);
    // A byte is there once its last bit is.
    if (baud_ > 0) freeAt_ += static_cast<double>(count) * kBitsPerByte / baud_;
    if (!RestUntil(freeAt_) || !SendChunk(bytes.data() + at, count)) return false;
  }
  return true;
}

}  // namespace sim
