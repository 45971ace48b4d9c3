#pragma once

#include <cstdint>
#include <optional>

#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// Notes in the settings application `CurrentVelk` which recording was started, so that it can be found again. Called
/// at Start and when recording is switched on. Settings that can't be written are no reason to record nothing: they
/// stay for the next save, which tells.
void WriteCurrentVelk(const Session& session, const Platform& platform);

/// The time of the last change of the log, key LastUpdated of `CurrentVelk`. Set with every row, on the disk at most
/// once a minute: each time costs as many syncs as three rows.
class LastUpdated {
 public:
  explicit LastUpdated(const Platform& platform) : platform_(platform) {}

  void Stamp();
  /// Brings the last stamp to the disk.
  void Flush();

 private:
  const Platform& platform_;
  bool pending_ = false;
  std::optional<std::int64_t> flushedAt_;  ///< Ticks
};

}  // namespace velk
