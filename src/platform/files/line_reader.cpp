#include "platform/files/line_reader.h"

#include <algorithm>
#include <cstring>

namespace velk {

namespace {

constexpr std::int64_t kLeastBlock = 512, kMostBlock = 256 * 1024;

/// The place of a byte between two places, or the second of them.
std::size_t PlaceOf(char byte, const std::vector<char>& buffer, std::size_t from, std::size_t to) {
  const void* found = from < to ? std::memchr(buffer.data() + from, byte, to - from) : nullptr;
  return found == nullptr ? to : static_cast<std::size_t>(static_cast<const char*>(found) - buffer.data());
}

}  // namespace

LineReader::LineReader(const InputFile& file, std::int64_t from) : file_(file), base_(from), start_(from) {
}

bool LineReader::Next() {
  start_ = End();
  for (;;) {
    if (!searched_ || feed_ < begin_) feed_ = PlaceOf('\n', buffer_, begin_, filled_);
    searched_ = true;
    const std::size_t most = begin_ + kMostLine;
    const std::size_t end = PlaceOf('\r', buffer_, begin_, std::min(feed_, most));
    if (end == most && end < feed_) {
      Take(end, 0);
      return true;
    }
    // An LF behind a CR may be what comes next.
    const bool endsWithReturn = end < feed_;
    if (endsWithReturn && (end + 1 < filled_ || atEnd_)) {
      Take(end, end + 1 < filled_ && buffer_[end + 1] == '\n' ? 2 : 1);
      return true;
    }
    if (!endsWithReturn && (end < filled_ || (atEnd_ && begin_ < filled_))) {
      Take(end, end < filled_ ? 1 : 0);
      return true;
    }
    if (atEnd_) return false;
    Fill();
  }
}

void LineReader::Take(std::size_t end, std::size_t ending) {
  line_ = std::string_view(buffer_.data() + begin_, end - begin_);
  begin_ = end + ending;
}

/// Reads more behind what was not given yet.
void LineReader::Fill() {
  std::move(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
            buffer_.begin() + static_cast<std::ptrdiff_t>(filled_), buffer_.begin());
  base_ += static_cast<std::int64_t>(begin_);
  filled_ -= begin_;
  begin_ = 0;
  searched_ = false;
  const std::int64_t place = base_ + static_cast<std::int64_t>(filled_);
  // One byte more than there should be shows the end.
  const std::int64_t more = std::clamp(file_.Size() - place + 1, kLeastBlock, kMostBlock);
  buffer_.resize(std::max(buffer_.size(), filled_ + static_cast<std::size_t>(more)));
  const std::size_t got = file_.Read(place, buffer_.data() + filled_, buffer_.size() - filled_);
  filled_ += got;
  atEnd_ = filled_ < buffer_.size();
}

}  // namespace velk
