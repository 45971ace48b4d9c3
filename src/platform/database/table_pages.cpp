#include "platform/database/table_pages.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <optional>

#include "platform/database/catalog.h"

namespace velk {

namespace {

constexpr unsigned char kInterior = 5, kLeaf = 13;  // kinds of pages
constexpr std::size_t kMostLeaves = 1'000'000;
constexpr std::uint32_t kPagesAtOnce = 64;
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// Bytes of a field by its type; nothing for types that there are none of.
std::optional<std::size_t> SizeOf(std::uint64_t type) {
  if (type <= page_bytes::kOne) return page_bytes::kSizes[type];
  if (type < page_bytes::kFirstText) return std::nullopt;
  return (type - page_bytes::kFirstText) / 2;
}

double NumberOf(std::uint64_t type, const unsigned char* bytes) {
  if (type == page_bytes::kDouble) return std::bit_cast<double>(page_bytes::Whole(bytes, 8));
  if (type == page_bytes::kNull || type >= page_bytes::kFirstText) return kNone;
  if (type >= page_bytes::kZero) return type == page_bytes::kOne ? 1 : 0;
  return static_cast<double>(page_bytes::Signed(bytes, static_cast<int>(*SizeOf(type))));
}

}  // namespace

TablePages::TablePages(const Connection& connection, const std::string& table, const std::vector<std::string>& columns,
                       std::size_t numbers)
    : file_(connection),
      root_(connection, "SELECT rootpage FROM sqlite_schema WHERE type = 'table' AND name = ? COLLATE NOCASE"),
      numbers_(numbers) {
  root_.Bind(1, table);
  isPlain_ = HasKeysOfPages(connection, table);
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
  if (!file_.Look()) return false;
  leaves_.clear();
  const auto depth = DepthOfLeaves(root);
  return depth && FindLeaves(root, keys, *depth) && ReadLeaves(keys, take);
}

/// How far below the root the leaves are; nothing where it can't be told.
std::optional<int> TablePages::DepthOfLeaves(std::uint32_t page) const {
  std::vector<unsigned char> bytes(file_.Size());
  for (int depth = 0; depth < page_bytes::kDeepest; ++depth) {
    if (page < 2 || !file_.Read(page, bytes)) return std::nullopt;
    if (bytes[0] == kLeaf) return depth;
    const auto first = page_bytes::Whole(&bytes[page_bytes::kInteriorHead], 2);
    if (bytes[0] != kInterior || page_bytes::Whole(&bytes[3], 2) == 0 || first + 4 > file_.Usable())
      return std::nullopt;
    page = static_cast<std::uint32_t>(page_bytes::Whole(&bytes[first], 4));
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
  std::vector<unsigned char> bytes(file_.Size());
  if (!file_.Read(page, bytes)) return false;
  const auto cells = page_bytes::Whole(&bytes[3], 2);
  if (bytes[0] != kInterior || page_bytes::kInteriorHead + 2 * cells > file_.Usable()) return false;
  const Bytes whole(bytes.data(), file_.Usable());
  std::int64_t before = std::numeric_limits<std::int64_t>::min();
  for (std::size_t i = 0; i < cells && before < keys.last; ++i) {
    auto at = page_bytes::Whole(&bytes[page_bytes::kInteriorHead + 2 * i], 2);
    if (at + 4 > file_.Usable()) return false;
    const auto child = static_cast<std::uint32_t>(page_bytes::Whole(&bytes[at], 4));
    const auto key = page_bytes::Varying(whole, at += 4);
    if (!key) return false;
    before = static_cast<std::int64_t>(*key);
    if (before >= keys.first && !FindLeaves(child, keys, above - 1)) return false;
  }
  return before >= keys.last ||
         FindLeaves(static_cast<std::uint32_t>(page_bytes::Whole(&bytes[8], 4)), keys, above - 1);
}

/// Pages that follow each other in the file, or nearly so, are read at once.
bool TablePages::ReadLeaves(const Span& keys, const Take& take) {
  for (std::size_t i = 0; i < leaves_.size();) {
    const std::uint32_t first = leaves_[i];
    std::size_t end = i + 1;
    while (end < leaves_.size() && leaves_[end] > leaves_[end - 1] && leaves_[end] - first < kPagesAtOnce) ++end;
    pages_.resize((leaves_[end - 1] - first + 1) * file_.Size());
    if (!file_.Read(first, pages_)) return false;
    for (; i < end; ++i)
      if (!TakeRows(Bytes(&pages_[(leaves_[i] - first) * file_.Size()], file_.Usable()), keys, take)) return false;
  }
  return true;
}

bool TablePages::TakeRows(Bytes page, const Span& keys, const Take& take) {
  const auto cells = page_bytes::Whole(&page[3], 2);
  if (page[0] != kLeaf || page_bytes::kLeafHead + 2 * cells > page.size()) return false;
  for (std::size_t i = 0; i < cells; ++i)
    if (!TakeRow(page, page_bytes::Whole(&page[page_bytes::kLeafHead + 2 * i], 2), keys, take)) return false;
  return true;
}

/// A cell of a leaf: the size of the row, its key, its header, its fields. A row that is larger than a page has its end
/// elsewhere.
bool TablePages::TakeRow(Bytes page, std::size_t cell, const Span& keys, const Take& take) {
  constexpr std::size_t kAlwaysFree = 35;
  const auto size = page_bytes::Varying(page, cell);
  const auto number = page_bytes::Varying(page, cell);
  if (!number || *size > page.size() - kAlwaysFree || cell + *size > page.size()) return false;
  const auto key = static_cast<std::int64_t>(*number);
  if (key < keys.first || key > keys.last) return true;
  const Bytes row = page.subspan(cell, static_cast<std::size_t>(*size));
  std::size_t at = 0;
  const auto head = page_bytes::Varying(row, at);
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
    const auto type = page_bytes::Varying(header, at);
    const auto size = type ? SizeOf(*type) : std::nullopt;
    if (!size || *size > file_.Size()) return false;
    types_.push_back({*type, place});
    place += *size;
  }
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    Field& field = fields_[i];
    if (field.column >= types_.size()) return false;  // the column was added later
    field.type = types_[field.column].first;
    field.at = types_[field.column].second;
    if (field.type >= page_bytes::kFirstText && i < numbers_) return false;
  }
  end_ = place;
  header_.assign(header.begin(), header.end());
  return true;
}

}  // namespace velk
