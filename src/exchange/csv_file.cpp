#include "exchange/csv_file.h"

#include <algorithm>

#include "platform/files/line_reader.h"

namespace velk {

namespace {

constexpr std::int64_t kLinesOfBlock = 64;

}  // namespace

CsvFile::CsvFile(const std::string& path, CodePage page, const std::function<void(double done, double of)>& step)
    : file_(path), page_(page) {
  const auto size = static_cast<double>(file_.Size());
  start_ = BeginText(file_, [&](std::int64_t done) {
    if (step) step(static_cast<double>(done), size);
  });
  indexed_ = start_;
  LineReader reader(file_, start_);
  const std::string_view first = reader.Next() ? reader.Line() : std::string_view();
  const auto bytes = static_cast<double>(file_.Size());
  shape_ = AnalyseFirstLine(ToUtf8(first, page_), bytes);
  // By the bytes that stand there: as UTF-8 a line of a code page is longer.
  shape_.EstimatedRows = EstimateRows(bytes, first.size());
}

bool CsvFile::Index(std::int64_t bytes) {
  const std::int64_t end = indexed_ + bytes;
  LineReader reader(file_, indexed_);
  while (indexed_ < end && reader.Next()) {
    if (found_ % kLinesOfBlock == 0) places_.push_back(reader.Start());
    ++found_;
    if (!IsBlankLine(reader.Line())) lines_ = found_;
    indexed_ = reader.End();
  }
  if (indexed_ < end) indexed_ = std::max(indexed_, file_.Size());
  return !IsIndexed();
}

const std::string& CsvFile::Line(std::int64_t line) {
  static const std::string kNone;
  if (line < 0 || line >= lines_) return kNone;
  const Block& block = BlockOf(line / kLinesOfBlock);
  const auto place = static_cast<std::size_t>(line % kLinesOfBlock);
  return place < block.lines.size() ? block.lines[place] : kNone;
}

const CsvFile::Block& CsvFile::BlockOf(std::int64_t number) {
  Block& block = blocks_[static_cast<std::size_t>(number) % blocks_.size()];
  if (block.number == number) return block;
  block.lines.clear();
  block.number = number;
  LineReader reader(file_, places_[static_cast<std::size_t>(number)]);
  for (std::int64_t i = 0; i < kLinesOfBlock && reader.Next(); ++i) block.lines.push_back(ToUtf8(reader.Line(), page_));
  return block;
}

}  // namespace velk
