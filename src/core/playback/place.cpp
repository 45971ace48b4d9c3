#include "core/playback/place.h"

#include <algorithm>
#include <string>

#include "core/texts.h"

namespace velk {

namespace {

constexpr std::int64_t kCountOnMs = 20;
/// Half a millisecond's worth of rows of 64 channels.
constexpr int kRowsAtOnce = 4096;

/// Digits in groups of three, with a thin space between them.
std::string Grouped(std::int64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t place = text.size(); place > 3;) text.insert(place -= 3, "\u2009");
  return text;
}

}  // namespace

OperatorText PlaybackPlace::Text(LogReader& reader, std::int64_t now) {
  if (count_ == 0 || now - countedAt_ >= kCountOnMs) {
    count_ = reader.Tally(kRowsAtOnce);
    countedAt_ = now;
  }
  count_ = std::max(count_, played_);
  return text::RowBefore + Grouped(played_) + text::RowOf + Grouped(count_);
}

}  // namespace velk
