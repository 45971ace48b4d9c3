#include "instruments/reading/line_framing.h"

#include <algorithm>

namespace velk {

void LineFraming::Reset(std::string_view terminator) {
  terminator_ = terminator.empty() ? "\r" : terminator;
  bytes_.clear();
  start_ = searched_ = 0;
  end_ = std::string::npos;
  dropping_ = false;
}

void LineFraming::Append(std::string_view bytes) {
  // What was taken makes room first; moving only when it is the larger part keeps the cost a byte constant.
  if (start_ > bytes_.size() / 2) {
    bytes_.erase(0, start_);
    searched_ -= start_;
    if (HasLine()) end_ -= start_;
    start_ = 0;
  }
  bytes_.append(bytes);
  if (!HasLine()) FindEnd();
}

std::string LineFraming::TakeLine() {
  std::string line = bytes_.substr(start_, end_ - start_);
  SkipTo(end_);
  end_ = std::string::npos;
  FindEnd();
  return line;
}

void LineFraming::FindEnd() {
  for (;;) {
    const std::size_t found = bytes_.find(terminator_, searched_);
    if (found == std::string::npos) break;
    const std::size_t behind = found + terminator_.size();
    if (!dropping_ && found - start_ <= kLongestLine) {
      end_ = behind;
      return;
    }
    dropping_ = false;
    SkipTo(behind);
  }
  // The last bytes may be the beginning of a terminator.
  const std::size_t beginning = terminator_.size() - 1;
  searched_ = std::max(start_, bytes_.size() - std::min(bytes_.size(), beginning));
  if (searched_ - start_ > kLongestLine) dropping_ = true;
  if (dropping_) start_ = searched_;
}

void LineFraming::SkipTo(std::size_t position) {
  start_ = searched_ = position;
}

void LineFraming::DropUnfinished() {
  std::size_t keep = start_;
  if (HasLine()) {
    keep = end_;
    for (std::size_t found = bytes_.find(terminator_, keep); found != std::string::npos;
         found = bytes_.find(terminator_, keep))
      keep = found + terminator_.size();
  }
  bytes_.resize(keep);
  searched_ = start_;
  dropping_ = false;
}

}  // namespace velk
