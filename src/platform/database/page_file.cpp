#include "platform/database/page_file.h"

#include <sqlite3.h>

#include "platform/database/command.h"

namespace velk {

namespace {

/// Whatever file the connection has open; null where it has none.
sqlite3_file* FileOf(const Connection& connection) {
  sqlite3_file* file = nullptr;
  const int code = sqlite3_file_control(connection.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
  return code == SQLITE_OK && file != nullptr && file->pMethods != nullptr ? file : nullptr;
}

}  // namespace

bool PageFile::Look() {
  // At 16 the size of a page, at 18 whether there is a write-ahead log, at 20 what each page has unused at its end.
  unsigned char head[24];
  constexpr unsigned char kNoLog = 1;
  if (!ReadBytes(0, head) || head[18] != kNoLog || head[19] != kNoLog) return false;
  const auto size = page_bytes::Whole(head + 16, 2);
  size_ = size == 1 ? 65536 : size;
  if (size_ < 512 || head[20] > 32) return false;
  usable_ = size_ - head[20];
  sqlite3_file* file = FileOf(connection_);
  sqlite3_int64 bytes = 0;
  if (file == nullptr || file->pMethods->xFileSize(file, &bytes) != SQLITE_OK) return false;
  count_ = static_cast<std::uint64_t>(bytes) / size_;
  return true;
}

bool PageFile::Read(std::uint64_t page, std::span<unsigned char> bytes) const {
  return page > 0 && ReadBytes((page - 1) * size_, bytes);
}

bool PageFile::ReadBytes(std::uint64_t at, std::span<unsigned char> bytes) const {
  sqlite3_file* file = FileOf(connection_);
  return file != nullptr && file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()),
                                                  static_cast<sqlite3_int64>(at)) == SQLITE_OK;
}

bool HasKeysOfPages(const Connection& connection, const std::string& table) {
  Command keys(connection, "SELECT count(*) FROM pragma_index_list(?) WHERE origin = 'pk'");
  keys.Bind(1, table);
  return keys.Next() && keys.Integer(0) == 0;
}

std::optional<std::uint64_t> page_bytes::Varying(std::span<const unsigned char> bytes, std::size_t& at) {
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

}  // namespace velk
