#include "log/save_as_log.h"

#include <vector>

#include "log/recording_lock.h"
#include "platform/database/jet_copy.h"
#include "platform/files/file_errors.h"
#include "platform/files/input_file.h"
#include "platform/files/output_file.h"

namespace velk {

bool IsJetLog(const std::string& path) {
  return IsJetFile(path);
}

void SaveAsLog(const std::string& path, const std::string& target,
               const std::function<void(double done, double of)>& step) {
  constexpr std::size_t kBytesAtOnce = 1 << 20;
  const auto lock = FileExists(target) ? LockForRecording(target) : nullptr;
  const InputFile from(JetCopyOf(path));
  OutputFile to(target);
  std::vector<char> bytes(kBytesAtOnce);
  for (std::int64_t done = 0; done < from.Size();) {
    const std::size_t count = from.Read(done, bytes.data(), bytes.size());
    if (count == 0) break;
    to.Put({bytes.data(), count});
    done += static_cast<std::int64_t>(count);
    step(static_cast<double>(done), static_cast<double>(from.Size()));
  }
  to.Complete();
}

}  // namespace velk
