#include "exchange/jet_reader.h"

#include <chrono>
#include <cstring>

#include "base/errors.h"
#include "base/scope.h"
#include "exchange/text_encoding.h"
#include "exchange/texts.h"
#include "platform/files/file_errors.h"

namespace velk {

namespace {

constexpr const char* kMark = "VELKJET1";
constexpr std::size_t kReadAtOnce = 256 * 1024;
constexpr std::size_t kMostColumns = 256;
constexpr std::size_t kMostText = 1 << 21;
constexpr std::chrono::seconds kSilence{20};
/// How long the event loop waits for it at a stretch.
constexpr int kWaitMilliseconds = 10;

std::vector<std::string> Words(const std::string& work, const JetTools& tools, const std::string& path,
                               const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {work, tools.charset, path};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return words;
}

}  // namespace

JetReader::JetReader(const JetTools& tools, const std::string& work, const std::string& path,
                     const std::vector<std::string>& arguments, std::function<void(double bytes)> step)
    : path_(path), step_(std::move(step)), program_(tools.program, Words(work, tools, path, arguments)) {
}

void JetReader::Begin() {
  if (begun_) return;
  Need(std::strlen(kMark));
  if (buffer_.compare(begin_, std::strlen(kMark), kMark) != 0) Fail();
  begin_ += std::strlen(kMark);
  begun_ = true;
}

/// Gives back what has come of an item that is not whole yet.
template <class Item>
JetReader::Came JetReader::Take(Item&& item) {
  // What was taken goes in large pieces.
  if (begin_ == buffer_.size() || begin_ > kReadAtOnce) {
    buffer_.erase(0, begin_);
    begin_ = 0;
  }
  const std::size_t start = begin_;
  const bool begunBefore = begun_;
  waits_ = false;
  const OnLeaving done([this] { waits_ = true; });
  try {
    return item() ? Came::One : Came::End;
  } catch (const NotYet&) {
    begin_ = start;
    begun_ = begunBefore;
    return Came::Nothing;
  }
}

JetReader::Came JetReader::TakeTable(JetTable& table) {
  return Take([&] { return NextTable(table); });
}

JetReader::Came JetReader::TakeRow(std::vector<FieldValue>& cells) {
  return Take([&] { return NextRow(cells); });
}

bool JetReader::NextTable(JetTable& table) {
  Begin();
  const char mark = Mark();
  if (mark == 'E') return End(), false;
  if (mark != 'T') Fail();
  table.name = Text();
  columns_ = Number<std::uint32_t>();
  if (columns_ > kMostColumns) Fail();
  table.columns.clear();
  for (std::size_t i = 0; i < columns_; ++i) {
    JetColumn column{Text(), 0};
    column.type = static_cast<unsigned char>(Mark());
    table.columns.push_back(std::move(column));
  }
  return true;
}

bool JetReader::NextRow(std::vector<FieldValue>& cells) {
  char mark = Mark();
  if (mark == 'D') {
    laterDay_ = Number<double>();
    mark = Mark();
  }
  if (mark == 'L') {
    lost_ = Number<std::int64_t>();
    mark = Mark();
  }
  if (mark == 'E') return End(), false;
  if (mark != 'R') Fail();
  cells.resize(columns_);
  for (FieldValue& cell : cells) cell = Cell();
  return true;
}

FieldValue JetReader::Cell() {
  switch (Mark()) {
    case 0:
      return {};
    case 1:
      return Number<double>();
    case 2:
      return FieldValue(std::in_place_type<std::int64_t>, Number<std::int64_t>());
    case 3:
      return Text();
    default:
      Fail();
  }
}

char JetReader::Mark() {
  Need(1);
  return buffer_[begin_++];
}

template <class Value>
Value JetReader::Number() {
  Need(sizeof(Value));
  Value value;
  std::memcpy(&value, buffer_.data() + begin_, sizeof value);
  begin_ += sizeof value;
  return value;
}

std::string JetReader::Text() {
  const std::size_t size = Number<std::uint32_t>();
  if (size > kMostText) Fail();
  Need(size);
  std::string text = ToUtf8(std::string_view(buffer_).substr(begin_, size), CodePage::Western);
  begin_ += size;
  return text;
}

void JetReader::Need(std::size_t bytes) {
  if (buffer_.size() - begin_ >= bytes) return;
  if (!waits_) {
    Read(0);
    if (buffer_.size() - begin_ < bytes) throw NotYet{};
    return;
  }
  buffer_.erase(0, begin_);
  begin_ = 0;
  heard_ = std::chrono::steady_clock::now();
  while (buffer_.size() < bytes) {
    Read(kWaitMilliseconds);
    if (step_) step_(bytes_);
  }
}

void JetReader::Read(int milliseconds) {
  const std::size_t before = buffer_.size();
  const auto output = program_.Read(buffer_, kReadAtOnce, milliseconds);
  if (output == ChildProgram::Output::Ended) Fail();
  const auto now = std::chrono::steady_clock::now();
  if (output == ChildProgram::Output::Came) heard_ = now;
  if (now - heard_ > kSilence) Fail();
  bytes_ += static_cast<double>(buffer_.size() - before);
}

/// An answer counts only where its program has ended well too.
void JetReader::End() {
  if (!program_.EndedWell()) Fail();
}

void JetReader::Fail() const {
  throw RuntimeError(ErrorNumber::NotADatabase, text::ForeignUnreadable + path_);
}

}  // namespace velk
