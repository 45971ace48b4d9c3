#include "platform/files/whole_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QSaveFile>
#include <cerrno>

#include "base/errors.h"
#include "base/scope.h"
#include "base/text_qt.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

ErrorNumber NumberOf(QFileDevice::FileError error) {
  switch (error) {
    case QFileDevice::OpenError:
    case QFileDevice::PermissionsError:
      return ErrorNumber::PermissionDenied;
    case QFileDevice::ResourceError:
      return ErrorNumber::DiskFull;
    default:
      return ErrorNumber::DeviceIOError;
  }
}

[[noreturn]] void Fail(QSaveFile& file, const std::string& path) {
  const ErrorNumber number = NumberOf(file.error());
  const QString words = file.errorString();
  file.cancelWriting();
  throw RuntimeError(number, path + ": " + SystemText(number, FromQt(words)));
}

}  // namespace

std::string ReadWholeFile(const std::string& path, std::size_t limit) {
  CheckRegularFile(path, false);
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) RaiseFileError(errno, path);
  const OnLeaving done([&] { close(descriptor); });
  std::string bytes;
  char block[64 * 1024];
  for (;;) {
    const ssize_t count = read(descriptor, block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) RaiseFileError(errno, path);
    if (count == 0) return bytes;
    bytes.append(block, static_cast<std::size_t>(count));
    if (bytes.size() > limit) throw RuntimeError(ErrorNumber::Overflow, FileErrorText(ErrorNumber::Overflow, path));
  }
}

void WriteWholeFile(const std::string& path, std::initializer_list<std::string_view> parts) {
  QSaveFile file(QFile::decodeName(path.c_str()));
  if (!file.open(QIODevice::WriteOnly)) Fail(file, path);
  for (const std::string_view part : parts) {
    const auto size = static_cast<qint64>(part.size());
    if (file.write(part.data(), size) != size) Fail(file, path);
  }
  // The toolkit takes a buffer that went to the disk in part for written.
  if (!file.flush() || file.size() != file.pos() || !file.commit()) Fail(file, path);
}

}  // namespace velk
