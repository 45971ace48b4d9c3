#include "platform/database/table_pages.h"

#include <sqlite3.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <optional>

#include "platform/database/catalog.h"

namespace velk {

namespace {

constexpr unsigned char kInterior = 5, kLeaf = 13;  // kinds of pages
constexpr std::size_t kLeafHead = 8, kInteriorHead = 12;
constexpr int kDeepest = 20;
constexpr std::size_t kMostLeaves = 1'000'000;
constexpr std::uint32_t kPagesAtOnce = 64;
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

std::uint64_t Whole(const unsigned char* bytes, int count) {
  std::uint64_t number = 0;
  for (int i = 0; i < count; ++i) number = number << 8 | bytes[i];
  return number;
}

/// The same with a sign.
std::int64_t Signed(const unsigned char* bytes, int count) {
  const int unused = 64 - 8 * count;
  return static_cast<std::int64_t>(Whole(bytes, count) << unused) >> unused;
}

/// A number of any length, up to nine bytes; `at` goes behind it. Nothing where the bytes end.
std::optional<std::uint64_t> Varying(std::span<const unsigned char> bytes, std::size_t& at) {
  std::uint64_t number = 0;
  for (int i = 0; i < 9; ++i) {
    if (at >= bytes.size()) return std::nullopt;
    const unsigned char byte = bytes[at++];
    if (i == 8) return number << 8 | byte;
    number = number << 7 | (byte & 0x7F);
    if (byte < 0x80) return number;
  }
  return number;
}

constexpr std::uint64_t kDouble = 7, kZero = 8, kOne = 9, kFirstText = 12;

/// Bytes of a field by its type; nothing for types that there are none of.
std::optional<std::size_t> SizeOf(std::uint64_t type) {
  constexpr std::size_t kSizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0};
  if (type <= kOne) return kSizes[type];
  if (type < kFirstText) return std::nullopt;
  return (type - kFirstText) / 2;
}

double NumberOf(std::uint64_t type, const unsigned char* bytes) {
  if (type == kDouble) return std::bit_cast<double>(Whole(bytes, 8));
  if (type == 0 || type >= kFirstText) return kNone;
  if (type >= kZero) return type == kOne ? 1 : 0;
  return static_cast<double>(Signed(bytes, static_cast<int>(*SizeOf(type))));
}

}  // namespace

TablePages::TablePages(const Connection& connection, const std::string& table, const std::vector<std::string>& columns,
                       std::size_t numbers)
    : connection_(connection),
      root_(connection, "SELECT rootpage FROM sqlite_schema WHERE type = 'table' AND name = ? COLLATE NOCASE"),
      numbers_(numbers) {
  root_.Bind(1, table);
  Command info(connection, "SELECT name, hidden, pk FROM pragma_table_xinfo(?)");
  info.Bind(1, table);
  std::vector<std::string> names;
  while (info.Next()) {
    if (info.Integer(1) != 0) isPlain_ = false;
    // A key may stand elsewhere than among the fields.
    names.push_back(info.Integer(2) == 0 ? info.Text(0) : std::string());
  }
  for (const std::string& column : columns) {
    const auto named =
        std::find_if(names.begin(), names.end(), [&](const std::string& name) { return SameName(name, column); });
    if (named == names.end() || column.empty()) isPlain_ = false;
    fields_.push_back({static_cast<std::size_t>(named - names.begin())});
  }
  values_.resize(fields_.size());
}

bool TablePages::Read(std::int64_t first, std::int64_t last, const Take& take) {
  if (!isPlain_ || !root_.Next()) return false;
  // As long as this statement stands at its row, nobody writes to the file.
  const std::int64_t root = root_.Integer(0);
  bool isDone = false;
  try {
    isDone = root > 1 && ReadLocked(static_cast<std::uint32_t>(root), {first, last}, take);
  } catch (...) {
    root_.Reset();
    throw;
  }
  root_.Reset();
  return isDone;
}

bool TablePages::ReadLocked(std::uint32_t root, const Span& keys, const Take& take) {
  // At 16 the size of a page, at 18 whether there is a write-ahead log, at 20 what each page has unused at its end.
  unsigned char head[24];
  constexpr unsigned char kNoLog = 1;
  if (!ReadBytes(0, head) || head[18] != kNoLog || head[19] != kNoLog) return false;
  const auto size = Whole(head + 16, 2);
  pageSize_ = size == 1 ? 65536 : size;
  if (pageSize_ < 512 || head[20] > 32) return false;
  usable_ = pageSize_ - head[20];
  leaves_.clear();
  const auto depth = DepthOfLeaves(root);
  return depth && FindLeaves(root, keys, *depth) && ReadLeaves(keys, take);
}

bool TablePages::ReadBytes(std::uint64_t at, std::span<unsigned char> bytes) const {
  sqlite3_file* file = nullptr;
  if (sqlite3_file_control(connection_.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      file == nullptr || file->pMethods == nullptr)
    return false;
  return file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), static_cast<sqlite3_int64>(at)) ==
         SQLITE_OK;
}

/// How far below the root the leaves are; nothing where it can't be told.
std::optional<int> TablePages::DepthOfLeaves(std::uint32_t page) const {
  std::vector<unsigned char> bytes(pageSize_);
  for (int depth = 0; depth < kDeepest; ++depth) {
    if (page < 2 || !ReadBytes(PlaceOf(page), bytes)) return std::nullopt;
    if (bytes[0] == kLeaf) return depth;
    const auto first = Whole(&bytes[kInteriorHead], 2);
    if (bytes[0] != kInterior || Whole(&bytes[3], 2) == 0 || first + 4 > usable_) return std::nullopt;
    page = static_cast<std::uint32_t>(Whole(&bytes[first], 4));
  }
  return std::nullopt;
}

/// A cell of an interior page: the page of keys up to one, four bytes, and that key. Those beyond the last one are in
/// the page that its head names.
bool TablePages::FindLeaves(std::uint32_t page, const Span& keys, int above) {
  if (page < 2 || leaves_.size() > kMostLeaves) return false;
  if (above == 0) {
    leaves_.push_back(page);
    return true;
  }
  std::vector<unsigned char> bytes(pageSize_);
  if (!ReadBytes(PlaceOf(page), bytes)) return false;
  const auto cells = Whole(&bytes[3], 2);
  if (bytes[0] != kInterior || kInteriorHead + 2 * cells > usable_) return false;
  const Bytes whole(bytes.data(), usable_);
  std::int64_t before = std::numeric_limits<std::int64_t>::min();
  for (std::size_t i = 0; i < cells && before < keys.last; ++i) {
    auto at = Whole(&bytes[kInteriorHead + 2 * i], 2);
    if (at + 4 > usable_) return false;
    const auto child = static_cast<std::uint32_t>(Whole(&bytes[at], 4));
    const auto key = Varying(whole, at += 4);
    if (!key) return false;
    before = static_cast<std::int64_t>(*key);
    if (before >= keys.first && !FindLeaves(child, keys, above - 1)) return false;
  }
  return before >= keys.last || FindLeaves(static_cast<std::uint32_t>(Whole(&bytes[8], 4)), keys, above - 1);
}

/// Pages that follow each other in the file, or nearly so, are read at once.
bool TablePages::ReadLeaves(const Span& keys, const Take& take) {
  for (std::size_t i = 0; i < leaves_.size();) {
    const std::uint32_t first = leaves_[i];
    std::size_t end = i + 1;
    while (end < leaves_.size() && leaves_[end] > leaves_[end - 1] && leaves_[end] - first < kPagesAtOnce) ++end;
    pages_.resize((leaves_[end - 1] - first + 1) * pageSize_);
    if (!ReadBytes(PlaceOf(first), pages_)) return false;
    for (; i < end; ++i)
      if (!TakeRows(Bytes(&pages_[(leaves_[i] - first) * pageSize_], usable_), keys, take)) return false;
  }
  return true;
}

bool TablePages::TakeRows(Bytes page, const Span& keys, const Take& take) {
  const auto cells = Whole(&page[3], 2);
  if (page[0] != kLeaf || kLeafHead + 2 * cells > page.size()) return false;
  for (std::size_t i = 0; i < cells; ++i)
    if (!TakeRow(page, Whole(&page[kLeafHead + 2 * i], 2), keys, take)) return false;
  return true;
}

/// A cell of a leaf: the size of the row, its key, its header, its fields. A row that is larger than a page has its end
/// elsewhere.
bool TablePages::TakeRow(Bytes page, std::size_t cell, const Span& keys, const Take& take) {
  constexpr std::size_t kAlwaysFree = 35;
  const auto size = Varying(page, cell);
  const auto number = Varying(page, cell);
  if (!number || *size > page.size() - kAlwaysFree || cell + *size > page.size()) return false;
  const auto key = static_cast<std::int64_t>(*number);
  if (key < keys.first || key > keys.last) return true;
  const Bytes row = page.subspan(cell, static_cast<std::size_t>(*size));
  std::size_t at = 0;
  const auto head = Varying(row, at);
  if (!head || *head < at || *head > row.size()) return false;
  const Bytes header = row.first(static_cast<std::size_t>(*head));
  const bool isKnown =
      header.size() == header_.size() && std::memcmp(header.data(), header_.data(), header.size()) == 0;
  if (!isKnown && !LayOut(header, at)) return false;
  if (end_ > row.size()) return false;
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const Field& field = fields_[i];
    values_[i] = NumberOf(field.type, row.data() + field.at);
  }
  take(key, values_);
  return true;
}

/// Where the fields are in rows with this header: behind its size, which ends at `at`, the type of each field.
bool TablePages::LayOut(Bytes header, std::size_t at) {
  header_.clear();
  types_.clear();
  std::size_t place = header.size();
  while (at < header.size()) {
    const auto type = Varying(header, at);
    const auto size = type ? SizeOf(*type) : std::nullopt;
    if (!size || *size > pageSize_) return false;
    types_.push_back({*type, place});
    place += *size;
  }
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    Field& field = fields_[i];
    if (field.column >= types_.size()) return false;  // the column was added later
    field.type = types_[field.column].first;
    field.at = types_[field.column].second;
    if (field.type >= kFirstText && i < numbers_) return false;
  }
  end_ = place;
  header_.assign(header.begin(), header.end());
  return true;
}

}  // namespace velk
