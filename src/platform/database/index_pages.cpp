#include "platform/database/index_pages.h"

#include <array>
#include <cstddef>
#include <span>

#include "platform/database/catalog.h"
#include "platform/database/command.h"
#include "platform/database/page_file.h"

namespace velk {

namespace {

constexpr unsigned char kIndexInterior = 2, kIndexLeaf = 10;  // kinds of pages
constexpr std::size_t kMostColumns = 9;  ///< a record of their numbers stands whole in a page of any size

/// An index that has nothing but the columns, upwards, and the key; empty where there is none.
std::string PlainIndex(Connection& connection, const std::string& table, const std::vector<std::string>& columns) {
  if (columns.size() > kMostColumns || !HasKeysOfPages(connection, table)) return {};
  std::string index = Catalog(connection).IndexOver(table, columns);
  Command last(connection, "SELECT count(*), max(cid = -1 AND seqno = ?) FROM pragma_index_xinfo(?)");
  last.Bind(1, static_cast<std::int64_t>(columns.size())).Bind(2, index);
  last.Next();
  const bool isPlain = last.Integer(0) == static_cast<std::int64_t>(columns.size()) + 1 && last.Integer(1) == 1;
  return isPlain ? index : std::string();
}

/// A walk through the pages of an index. Each entry stands once, in a leaf or between two pages of an interior one.
class IndexWalk {
 public:
  IndexWalk(const PageFile& file, std::size_t columns, std::vector<std::int64_t>& keys,
            const std::function<void()>& step)
      : file_(file), columns_(columns), keys_(keys), step_(step), pagesLeft_(file.Count()) {
    for (auto& page : pages_) page.resize(file.Size());
  }

  /// The page and all below it, `depth` of them at most.
  bool Take(std::uint64_t number, std::size_t depth) {
    // In a damaged file pages may lead back to each other.
    if (number < 2 || depth == 0 || pagesLeft_-- == 0) return false;
    std::vector<unsigned char>& page = pages_[depth - 1];
    if (!file_.Read(number, page)) return false;
    const bool isLeaf = page[0] == kIndexLeaf;
    if (!isLeaf && page[0] != kIndexInterior) return false;
    const std::size_t head = isLeaf ? page_bytes::kLeafHead : page_bytes::kInteriorHead;
    const auto cells = page_bytes::Whole(&page[3], 2);
    if (head + 2 * cells > file_.Usable()) return false;
    for (std::size_t i = 0; i < cells; ++i) {
      auto at = page_bytes::Whole(&page[head + 2 * i], 2);
      if (!isLeaf) {
        if (at + kPageNumber > file_.Usable() || !Take(page_bytes::Whole(&page[at], kPageNumber), depth - 1))
          return false;
        at += kPageNumber;
      }
      if (!TakeEntry(page, at)) return false;
    }
    if (isLeaf) step_();
    return isLeaf || Take(page_bytes::Whole(&page[page_bytes::kLeafHead], kPageNumber), depth - 1);
  }

 private:
  static constexpr std::size_t kPageNumber = 4;

  /// The size of the record; the record: the size of its head, a type for each field, the fields; the last one is the
  /// key. All of it takes few bytes as long as there are numbers.
  bool TakeEntry(std::span<const unsigned char> page, std::size_t at) {
    const std::size_t head = columns_ + 2;
    if (at + 1 + head > file_.Usable()) return false;
    const std::size_t end = at + 1 + page[at];
    const unsigned char* types = &page[at + 2];
    if (end > file_.Usable() || page[at + 1] != head) return false;
    std::size_t place = at + 1 + head;
    for (std::size_t i = 0; i < columns_; ++i) {
      if (types[i] > page_bytes::kOne) return false;
      place += page_bytes::kSizes[types[i]];
    }
    const unsigned char type = types[columns_];
    if (type == page_bytes::kNull || type == page_bytes::kDouble || type > page_bytes::kOne) return false;
    const std::size_t size = page_bytes::kSizes[type];
    if (place + size != end) return false;
    keys_.push_back(size > 0 ? page_bytes::Signed(&page[place], static_cast<int>(size)) : type - page_bytes::kZero);
    return true;
  }

  const PageFile& file_;
  const std::size_t columns_;
  std::vector<std::int64_t>& keys_;
  const std::function<void()>& step_;
  std::uint64_t pagesLeft_;
  std::array<std::vector<unsigned char>, page_bytes::kDeepest> pages_;  ///< by their depth
};

}  // namespace

bool KeysFromIndex(Connection& connection, const std::string& table, const std::vector<std::string>& columns,
                   std::vector<std::int64_t>& keys, const std::function<void()>& step) {
  Command root(connection, "SELECT rootpage FROM sqlite_schema WHERE type = 'index' AND name = ? COLLATE NOCASE");
  root.Bind(1, PlainIndex(connection, table, columns));
  // As long as this statement stands at its row, nobody writes to the file.
  if (!root.Next()) return false;
  PageFile file(connection);
  return file.Look() && IndexWalk(file, columns.size(), keys, step)
                            .Take(static_cast<std::uint64_t>(root.Integer(0)), page_bytes::kDeepest);
}

}  // namespace velk
