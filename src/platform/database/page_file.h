#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/database/connection.h"

namespace velk {

/// The pages of a database file, as the engine reads them. Who looks at them keeps the engine's lock meanwhile, by a
/// statement that stands at its row. They are numbered from 1; the first one begins with the head of the file.
class PageFile {
 public:
  /// The connection outlives this, and reads only.
  explicit PageFile(const Connection& connection) : connection_(connection) {}

  /// Reads the head. False where the pages don't tell all, as beside a write-ahead log, or are no such pages.
  bool Look();
  /// Bytes of a page.
  std::size_t Size() const { return size_; }
  /// Those of them that hold something: the others, at the end, are left free for encryption and the like.
  std::size_t Usable() const { return usable_; }
  /// How many pages there are.
  std::uint64_t Count() const { return count_; }
  /// Pages that follow each other, as many as `bytes` holds; false where they aren't there.
  bool Read(std::uint64_t page, std::span<unsigned char> bytes) const;

 private:
  bool ReadBytes(std::uint64_t at, std::span<unsigned char> bytes) const;

  const Connection& connection_;
  std::size_t size_ = 0, usable_ = 0;
  std::uint64_t count_ = 0;
};

/// Whether the keys in the pages of a table are those that KeyOf finds its rows by. A primary key that has an index of
/// its own is another one.
bool HasKeysOfPages(const Connection& connection, const std::string& table);

/// Numbers and fields as they stand in pages: the highest byte first.
namespace page_bytes {

// Heads of pages: a leaf's, and an interior one's, which ends with the page of what comes behind all cells. At byte 3
// stands how many cells there are; behind the head, where each of them begins, two bytes each.
inline constexpr std::size_t kLeafHead = 8, kInteriorHead = 12;
/// Beyond this there are no trees of pages.
inline constexpr int kDeepest = 20;

/// A number of so many bytes.
inline std::uint64_t Whole(const unsigned char* bytes, int count) {
  std::uint64_t number = 0;
  for (int i = 0; i < count; ++i) number = number << 8 | bytes[i];
  return number;
}

/// The same with a sign.
inline std::int64_t Signed(const unsigned char* bytes, int count) {
  const int unused = 64 - 8 * count;
  return static_cast<std::int64_t>(Whole(bytes, count) << unused) >> unused;
}

/// A number of any length, up to nine bytes, seven bits in each and the eighth telling of more to come; `at` goes
/// behind it. Nothing where the bytes end.
std::optional<std::uint64_t> Varying(std::span<const unsigned char> bytes, std::size_t& at);

// Types of fields: Null, whole numbers up to eight bytes, 64-bit floats, 0 and 1, which take no bytes, two that there
// are none of, then bytes and texts of all lengths.
inline constexpr std::uint64_t kNull = 0, kDouble = 7, kZero = 8, kOne = 9, kFirstText = 12;

/// Bytes of a number by its type, up to kOne.
inline constexpr std::size_t kSizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0};

}  // namespace page_bytes

}  // namespace velk
