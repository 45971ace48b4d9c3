#pragma once

#include "core/sources/sample_source.h"
#include "platform/platform.h"

namespace velk {

/// The source of a protocol that the program has no driver for. Connect tells it; no sample ever comes.
class DriverlessSource : public SampleSource {
 public:
  explicit DriverlessSource(const Platform& platform) : platform_(platform) {}

  void Check() override;

 private:
  Platform platform_;
};

}  // namespace velk
