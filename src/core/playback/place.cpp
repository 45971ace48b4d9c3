#include "core/playback/place.h"

#include <algorithm>
#include <string>

#include "core/texts.h"

namespace velk {

namespace {

constexpr std::int64_t kCountAgainMs = 1000;

/// Digits in groups of three, with a thin space between them.
std::string Grouped(std::int64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t place = text.size(); place > 3;) text.insert(place -= 3, "\u2009");
  return text;
}

}  // namespace

OperatorText PlaybackPlace::Text(LogReader& reader, std::int64_t now) {
  if (count_ == 0 || now - countedAt_ >= kCountAgainMs) {
    count_ = reader.Count();
    countedAt_ = now;
  }
  count_ = std::max(count_, played_);
  return text::RowBefore + Grouped(played_) + text::RowOf + Grouped(count_);
}

}  // namespace velk
