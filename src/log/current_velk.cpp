#include "log/current_velk.h"

#include <exception>
#include <string>

#include "base/dates.h"
#include "platform/loop/clock.h"
#include "platform/settings/settings.h"

namespace velk {

namespace {

constexpr const char* kApplication = "CurrentVelk";
constexpr const char* kDBase = "DBase";
constexpr const char* kStampPicture = "dd-mmm-yyyy hh:mm:ss";
constexpr std::int64_t kFlushMilliseconds = 60'000;

/// A row is worth more than its stamp: what can't be written now stays in the store for the next flush.
void FlushSettings(SettingsStore& settings) {
  try {
    settings.Flush();
  } catch (const std::exception&) {
  }
}

}  // namespace

void WriteCurrentVelk(const Session& session, const Platform& platform) {
  const std::string now = FormatDate(platform.clock.Now(), kStampPicture);
  SettingsStore& settings = platform.settings;
  settings.Save(kApplication, kDBase, "TheFileName", session.LogFileInUse);
  settings.Save(kApplication, kDBase, "StartedAt", now);
  settings.Save(kApplication, kDBase, "LastUpdated", now);
  settings.Save(kApplication, kDBase, "NumberOfParameters", std::to_string(session.NumberOfParameters));
  settings.Save(kApplication, "Parameters", "Parameter1", kBlankName);
  FlushSettings(settings);
}

void LastUpdated::Stamp() {
  platform_.settings.Save(kApplication, kDBase, "LastUpdated", FormatDate(platform_.clock.Now(), kStampPicture));
  pending_ = true;
  const std::int64_t ticks = platform_.clock.Ticks();
  if (!flushedAt_ || ticks - *flushedAt_ >= kFlushMilliseconds) Flush();
}

void LastUpdated::Flush() {
  if (!pending_) return;
  FlushSettings(platform_.settings);
  pending_ = false;
  flushedAt_ = platform_.clock.Ticks();
}

}  // namespace velk
