#include "platform/ports/serial.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "base/text.h"
#include "platform/ports/dead_lock_file.h"
#include "support/pty.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using test::Pty;
using test::TemporaryFolder;

/// Runs events until the condition holds; false after ten seconds.
template <class Condition>
bool RunUntil(Condition condition) {
  QElapsedTimer clock;
  clock.start();
  while (!condition()) {
    if (clock.elapsed() > 10'000) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
  }
  return true;
}

void RunWhatIsPending() {
  for (int i = 0; i < 50; ++i) QCoreApplication::processEvents();
}

SerialSettings SettingsFor(const std::string& device) {
  SerialSettings settings;
  settings.device = device;
  settings.baudRate = 19200;
  return settings;
}

/// A port on a pseudo-terminal that gathers what comes.
struct OpenPort {
  OpenPort() {
    port->onReadyRead = [this] { received += port->Read(100'000); };
    port->Open(SettingsFor(pty.Device()));
  }
  bool Gets(const std::string& bytes) {
    return RunUntil([&] { return received.size() >= bytes.size(); }) && received == bytes;
  }

  Pty pty;
  std::unique_ptr<SerialPort> port = MakeSerialPort();
  std::string received;
};

ErrorNumber NumberOfFailure(const SerialSettings& settings) {
  try {
    MakeSerialPort()->Open(settings);
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return ErrorNumber{};
}

TEST(SerialPort, ReadsEveryByteValueUnchanged) {
  OpenPort open;
  std::string bytes;
  for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
  EXPECT_EQ(open.pty.Send(bytes), bytes.size());
  EXPECT_TRUE(open.Gets(bytes));
}

TEST(SerialPort, WritesToTheDevice) {
  OpenPort open;
  open.port->Write("Trad\r");
  std::string written;
  EXPECT_TRUE(RunUntil([&] {
    written += open.pty.Received();
    return written.size() >= 5;
  }));
  EXPECT_EQ(written, "Trad\r");
}

TEST(SerialPort, DoesNotEchoWhatTheDeviceSends) {
  OpenPort open;
  open.pty.Send("abc\r\n");
  EXPECT_TRUE(open.Gets("abc\r\n"));
  EXPECT_EQ(open.pty.Received(), "");
}

TEST(SerialPort, OpensThroughALink) {
  const Pty pty;
  const TemporaryFolder folder;
  ASSERT_EQ(symlink(pty.Device().c_str(), folder.File("unit").c_str()), 0);
  const auto port = MakeSerialPort();
  port->Open(SettingsFor(folder.File("unit")));
  EXPECT_TRUE(port->IsOpen());
}

void ExpectToOpen(SerialSettings settings) {
  const Pty pty;
  settings.device = pty.Device();
  const auto port = MakeSerialPort();
  EXPECT_NO_THROW(port->Open(settings)) << settings.baudRate << settings.parity << settings.dataBits
                                        << settings.stopBits << static_cast<int>(settings.handshake);
}

TEST(SerialPort, OpensAPseudoTerminalWithEveryLineSetting) {
  for (const int baud : {1200, 2400, 4800, 9600, 12345, 19200, 38400, 115200}) ExpectToOpen({"", baud});
  for (const char* parity : {"N", "E", "O", "M", "S"})
    for (const int bits : {7, 8})
      for (const char* stop : {"1", "1.5", "2"})
        for (const int handshake : {0, 1, 2, 3})
          ExpectToOpen({"", 9600, parity, bits, stop, static_cast<Handshake>(handshake)});
}

std::vector<PortSetting> UnsupportedByAPseudoTerminal(const char* parity, int bits, const char* stop,
                                                      Handshake handshake) {
  const Pty pty;
  const auto port = MakeSerialPort();
  port->Open({pty.Device(), 9600, parity, bits, stop, handshake});
  return port->Unsupported();
}

TEST(SerialPort, KnowsWhatADeviceDoesNotHave) {
  // A pseudo-terminal has 8 bits without parity, either count of stop bits, and no modem lines.
  using L = PortSetting;
  using Missing = std::vector<PortSetting>;
  EXPECT_EQ(UnsupportedByAPseudoTerminal("N", 8, "1", Handshake::None), Missing{});
  EXPECT_EQ(UnsupportedByAPseudoTerminal("N", 8, "2", Handshake::XonXoff), Missing{});
  EXPECT_EQ(UnsupportedByAPseudoTerminal("N", 8, "1.5", Handshake::None), Missing{L::StopBits});
  EXPECT_EQ(UnsupportedByAPseudoTerminal("N", 5, "1.5", Handshake::None), Missing{L::DataBits});
  EXPECT_EQ(UnsupportedByAPseudoTerminal("N", 7, "1", Handshake::None), Missing{L::DataBits});
  for (const char* parity : {"E", "M", "O", "S"})
    EXPECT_EQ(UnsupportedByAPseudoTerminal(parity, 8, "1", Handshake::None), Missing{L::Parity}) << parity;
  for (const Handshake lines : {Handshake::Rts, Handshake::RtsXonXoff})
    EXPECT_EQ(UnsupportedByAPseudoTerminal("N", 8, "1", lines), Missing{L::ModemLines});
  EXPECT_EQ(UnsupportedByAPseudoTerminal("M", 7, "1.5", Handshake::Rts),
            (Missing{L::DataBits, L::Parity, L::StopBits, L::ModemLines}));
}

TEST(SerialPort, RefusesSettingsThatNoPortHas) {
  const Pty pty;
  const SerialSettings good = SettingsFor(pty.Device());
  SerialSettings bad = good;
  bad.parity = "X";
  EXPECT_EQ(NumberOfFailure(bad), ErrorNumber::InvalidArgument);
  bad = good;
  bad.dataBits = 9;
  EXPECT_EQ(NumberOfFailure(bad), ErrorNumber::InvalidArgument);
  bad = good;
  bad.dataBits = 4;
  EXPECT_EQ(NumberOfFailure(bad), ErrorNumber::InvalidArgument);
  bad = good;
  bad.stopBits = "3";
  EXPECT_EQ(NumberOfFailure(bad), ErrorNumber::InvalidArgument);
  bad = good;
  bad.baudRate = 0;
  EXPECT_EQ(NumberOfFailure(bad), ErrorNumber::InvalidArgument);
  bad = good;
  bad.handshake = static_cast<Handshake>(4);
  EXPECT_EQ(NumberOfFailure(bad), ErrorNumber::InvalidArgument);
}

TEST(SerialPort, AHandlerThatRunsEventsDoesNotMuteThePort) {
  OpenPort open;
  int depth = 0;
  open.port->onReadyRead = [&] {
    open.received += open.port->Read(100'000);
    if (++depth > 1) return;
    // Bytes that come while the handler of the first ones is still busy.
    open.pty.Send("second");
    EXPECT_TRUE(RunUntil([&] { return open.received == "firstsecond"; }));
  };
  open.pty.Send("first");
  EXPECT_TRUE(open.Gets("firstsecond"));
  open.pty.Send("third");
  EXPECT_TRUE(open.Gets("firstsecondthird"));
}

TEST(SerialPort, AHandlerThatOnlyReadsStandsInForTheOther) {
  OpenPort open;
  std::string read;
  int announced = 0;
  open.port->onReadyRead = [&] { ++announced; };
  open.port->onBytes = [&] { read += open.port->Read(100'000); };
  open.pty.Send("first");
  ASSERT_TRUE(RunUntil([&] { return read == "first"; }));
  open.pty.Send("second");
  ASSERT_TRUE(RunUntil([&] { return read == "firstsecond"; }));
  RunWhatIsPending();
  EXPECT_EQ(announced, 0);
}

TEST(SerialPort, BytesBeyondTheReadBufferWaitInTheSystemAndNoneIsLost) {
  Pty pty;
  const auto port = MakeSerialPort();
  SerialSettings settings = SettingsFor(pty.Device());
  settings.readBuffer = 512;
  port->Open(settings);
  std::string sent, received;
  for (int i = 0; i < 40'000; ++i) sent += static_cast<char>(i * 7 + i / 251);
  std::size_t at = 0;
  for (int round = 0; round < 30; ++round) {
    at += pty.Send(std::string_view(sent).substr(at));
    QCoreApplication::processEvents();
    EXPECT_LE(port->BytesWaiting(), 512U);
  }
  EXPECT_LT(at, sent.size());
  EXPECT_TRUE(RunUntil([&] {
    at += pty.Send(std::string_view(sent).substr(at));
    received += port->Read(100);
    return received.size() == sent.size();
  }));
  EXPECT_EQ(received, sent);
}

TEST(SerialPort, PeekLeavesWhatWaits) {
  OpenPort open;
  open.port->onReadyRead = nullptr;
  open.pty.Send("a line\rpart");
  ASSERT_TRUE(RunUntil([&] { return open.port->BytesWaiting() == 11; }));
  EXPECT_EQ(open.port->Peek(), "a line\rpart");
  EXPECT_EQ(open.port->Read(20), "a line\rpart");
  EXPECT_EQ(open.port->Peek(), "");
}

TEST(SerialPort, ClearInputForgetsWhatWaits) {
  OpenPort open;
  open.port->onReadyRead = nullptr;
  open.pty.Send("old");
  ASSERT_TRUE(RunUntil([&] { return open.port->BytesWaiting() == 3; }));
  open.port->ClearInput();
  EXPECT_EQ(open.port->BytesWaiting(), 0U);
  open.pty.Send("new");
  ASSERT_TRUE(RunUntil([&] { return open.port->BytesWaiting() == 3; }));
  EXPECT_EQ(open.port->Read(10), "new");
}

TEST(SerialPort, AHangUpIsToldOnceWithThePortClosed) {
  OpenPort open;
  int hangUps = 0;
  bool wasOpen = true;
  open.port->onHangUp = [&] {
    ++hangUps;
    wasOpen = open.port->IsOpen();
  };
  open.pty.HangUp();
  ASSERT_TRUE(RunUntil([&] { return hangUps > 0; }));
  EXPECT_FALSE(wasOpen);
  RunWhatIsPending();
  EXPECT_EQ(hangUps, 1);
}

TEST(SerialPort, CanBeOpenedAgainFromTheHangUp) {
  OpenPort open;
  Pty next;
  open.port->onHangUp = [&] { open.port->Open(SettingsFor(next.Device())); };
  open.pty.HangUp();
  ASSERT_TRUE(RunUntil([&] { return open.port->IsOpen() && next.Send("again") == 5; }));
  EXPECT_TRUE(open.Gets("again"));
}

TEST(SerialPort, AnnouncesNothingAfterClose) {
  OpenPort open;
  open.pty.Send("late");
  ASSERT_TRUE(RunUntil([&] { return !open.received.empty(); }));
  int calls = 0;
  open.port->onReadyRead = [&] { ++calls; };
  open.port->onHangUp = [&] { ++calls; };
  open.pty.Send("later");
  open.port->Close();
  open.pty.HangUp();
  RunWhatIsPending();
  EXPECT_EQ(calls, 0);
}

TEST(SerialPort, MayBeClosedAndDestroyedInItsOwnHandler) {
  Pty pty;
  auto port = MakeSerialPort();
  port->Open(SettingsFor(pty.Device()));
  bool called = false;
  SerialPort* const raw = port.get();
  raw->onReadyRead = [&] {
    raw->Close();
    called = true;
  };
  pty.Send("x");
  ASSERT_TRUE(RunUntil([&] { return called; }));
  port->Open(SettingsFor(pty.Device()));
  pty.Send("y");
  port.reset();
  RunWhatIsPending();
}

TEST(SerialPort, AMissingDeviceIsNamed) {
  try {
    MakeSerialPort()->Open(SettingsFor("/dev/ttyVelkNone"));
    FAIL();
  } catch (const PortError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::DeviceUnavailable);
    EXPECT_EQ(error.Device(), "/dev/ttyVelkNone");
    EXPECT_NE(std::string(error.what()).find("/dev/ttyVelkNone"), std::string::npos);
  }
}

TEST(SerialPort, AFileThatIsNoSerialDeviceIsUnavailable) {
  const TemporaryFolder folder;
  EXPECT_EQ(NumberOfFailure(SettingsFor(folder.Touch("plain"))), ErrorNumber::DeviceUnavailable);
}

TEST(SerialPort, ABusyDeviceIsNamedAlsoWhenReachedByAnotherName) {
  OpenPort open;
  const TemporaryFolder folder;
  ASSERT_EQ(symlink(open.pty.Device().c_str(), folder.File("unit").c_str()), 0);
  for (const std::string& name : {open.pty.Device(), folder.File("unit")}) try {
      MakeSerialPort()->Open(SettingsFor(name));
      ADD_FAILURE() << name;
    } catch (const PortError& error) {
      EXPECT_EQ(error.Number(), ErrorNumber::FileAlreadyOpen);
      EXPECT_EQ(error.Device(), name);
    }
  EXPECT_TRUE(open.port->IsOpen());
}

TEST(SerialPort, ADeviceIsFreeAgainAfterClose) {
  OpenPort open;
  open.port->Close();
  const auto second = MakeSerialPort();
  EXPECT_NO_THROW(second->Open(SettingsFor(open.pty.Device())));
}

/// A program that does nothing, called like this one. `killed`: it has ended, and nobody has asked how.
class IdleProgram {
 public:
  explicit IdleProgram(bool killed) : child_(fork()) {
    if (child_ == 0) {
      pause();
      _exit(0);
    }
    if (!killed) return;
    kill(child_, SIGKILL);
    siginfo_t ended = {};
    waitid(P_PID, static_cast<id_t>(child_), &ended, WEXITED | WNOWAIT);
  }
  ~IdleProgram() {
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
  }
  IdleProgram(const IdleProgram&) = delete;
  IdleProgram& operator=(const IdleProgram&) = delete;

  pid_t Number() const { return child_; }

 private:
  const pid_t child_;
};

/// The lock file of an open port; empty where there is none.
std::string LockFileOf(const std::string& device) {
  const std::string name = "LCK..pts_" + device.substr(device.rfind('/') + 1);
  for (const char* folder : {"/run/lock/", "/var/lock/lockdev/", "/etc/locks/", "/var/spool/locks/", "/var/tmp/"})
    if (access((folder + name).c_str(), F_OK) == 0) return folder + name;
  return {};
}

/// As if the lock had been written a day ago.
void MakeOld(const std::string& lockFile) {
  const auto now = std::filesystem::last_write_time(lockFile);
  std::filesystem::last_write_time(lockFile, now - std::chrono::hours(24));
}

TEST(SerialPort, ALockWhoseHolderWasKilledOrNeverHadTheDeviceIsNoneToWaitFor) {
  for (const bool killed : {true, false}) {
    OpenPort open;
    const std::string lockFile = LockFileOf(open.pty.Device());
    std::ifstream stream(lockFile);
    std::string number;
    std::getline(stream, number);
    const std::string rest(std::istreambuf_iterator<char>(stream), {});
    ASSERT_FALSE(rest.empty()) << lockFile;
    open.port->Close();
    const IdleProgram former(killed);
    std::ofstream(lockFile) << former.Number() << "\n" << rest;
    if (!killed) MakeOld(lockFile);  // the number was given to a younger program
    EXPECT_NO_THROW(open.port->Open(SettingsFor(open.pty.Device()))) << (killed ? "killed" : "another program");
  }
}

/// A lock file of a file that stands for a device, as other programs write it.
struct ForeignLock {
  explicit ForeignLock(pid_t holder) { std::ofstream(file) << holder << "\n"; }
  ~ForeignLock() { unlink(file.c_str()); }

  const TemporaryFolder folder;
  const std::string device = folder.Touch("unit");
  const std::string file = "/tmp/LCK.." + ReplaceAll(device, "/", "_");
};

TEST(SerialPort, ALivingHoldersLockStaysWhileItDoesNotHaveTheDeviceOpen) {
  const IdleProgram holder(false);
  const ForeignLock lock(holder.Number());
  EXPECT_FALSE(RemoveDeadLockFile(lock.device)) << "it may be about to open it";
  MakeOld(lock.file);
  EXPECT_TRUE(RemoveDeadLockFile(lock.device)) << "it is younger than the lock, which was another one's";
  EXPECT_NE(access(lock.file.c_str(), F_OK), 0);
}

TEST(SerialPort, AHoldersLockStaysThoughItsDeviceWasUnplugged) {
  const ForeignLock lock(getpid());
  MakeOld(lock.file);
  const std::ifstream open(lock.device);
  unlink(lock.device.c_str());
  EXPECT_FALSE(RemoveDeadLockFile(lock.device));
}

/// The user nobody, when the tests run as root.
class AsNobody {
 public:
  AsNobody() {
    if (root_ && seteuid(65534) != 0) ADD_FAILURE();
  }
  ~AsNobody() {
    if (root_ && seteuid(0) != 0) ADD_FAILURE();
  }

 private:
  bool root_ = geteuid() == 0;
};

TEST(SerialPort, MissingPermissionNamesTheGroupThatOwnsTheDevice) {
  const TemporaryFolder folder;
  const std::string device = folder.Touch("locked");
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(device.c_str(), 0), 0);
  struct stat status = {};
  ASSERT_EQ(stat(device.c_str(), &status), 0);
  const AsNobody nobody;
  try {
    MakeSerialPort()->Open(SettingsFor(device));
    FAIL();
  } catch (const PortError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::PermissionDenied);
    EXPECT_EQ(error.Device(), device);
    const group* const owner = getgrnam(error.Group().c_str());
    ASSERT_NE(owner, nullptr) << error.Group();
    EXPECT_EQ(owner->gr_gid, status.st_gid);
  }
}

TEST(SerialPort, AClosedPortHasNothingAndTakesNothing) {
  const auto port = MakeSerialPort();
  EXPECT_FALSE(port->IsOpen());
  EXPECT_EQ(port->BytesWaiting(), 0U);
  EXPECT_EQ(port->Read(10), "");
  EXPECT_NO_THROW(port->Close());
  EXPECT_NO_THROW(port->ClearInput());
  try {
    port->Write("x");
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::PortNotOpen);
  }
}

}  // namespace
}  // namespace velk
