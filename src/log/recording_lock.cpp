#include "log/recording_lock.h"

#include "base/errors.h"
#include "log/texts.h"

namespace velk {

namespace {

[[noreturn]] void RaiseRecordedElsewhere(const std::string& path, const LockHolder& holder) {
  throw RuntimeError(ErrorNumber::FileAlreadyOpen, text::RecordedElsewhereBefore + path + text::RecordedElsewhereBy +
                                                       holder.process + text::RecordedElsewhereOn + holder.host +
                                                       text::RecordedElsewhereAfter);
}

}  // namespace

void CheckNotRecordedElsewhere(const std::string& path) {
  const auto holder = FileLock::HolderOf(path);
  if (holder && !holder->IsThisProgram()) RaiseRecordedElsewhere(path, *holder);
}

std::unique_ptr<FileLock> LockForRecording(const std::string& path) {
  auto lock = FileLock::Take(path);
  if (!lock) RaiseRecordedElsewhere(path, FileLock::HolderOf(path).value_or(LockHolder{}));
  return lock;
}

}  // namespace velk
