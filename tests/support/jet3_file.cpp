#include "support/jet3_file.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace velk::test {

namespace {

constexpr std::size_t kPage = 2048;
constexpr std::size_t kMapsPage = 1;
constexpr std::size_t kCatalogue = 2;
constexpr std::size_t kMapBytes = 128;

template <class Value>
void Put(std::string& to, Value value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  to.append(bytes, sizeof value);
}

template <class Value>
void PutAt(std::string& to, std::size_t place, Value value) {
  std::memcpy(to.data() + place, &value, sizeof value);
}

bool IsFixed(const Jet3File::Column& column) {
  return column.type != Jet3File::Text && column.type != Jet3File::Memo;
}

std::uint16_t WidthOf(Jet3File::Type type) {
  switch (type) {
    case Jet3File::Int:
      return 2;
    case Jet3File::LongInt:
      return 4;
    default:
      return 8;
  }
}

/// A value of a fixed width; zeros where there is none.
std::string FixedBytes(Jet3File::Type type, const FieldValue& cell) {
  const auto* whole = std::get_if<std::int64_t>(&cell);
  const auto* number = std::get_if<double>(&cell);
  std::string bytes;
  if (type == Jet3File::Int)
    Put(bytes, static_cast<std::int16_t>(whole ? *whole : 0));
  else if (type == Jet3File::LongInt)
    Put(bytes, static_cast<std::int32_t>(whole ? *whole : 0));
  else
    Put(bytes, number ? *number : whole ? static_cast<double>(*whole) : 0.0);
  return bytes;
}

/// A memo stands behind a head of 12 bytes, whose highest bit says that it does.
std::string VariableBytes(Jet3File::Type type, const FieldValue& cell) {
  const auto* text = std::get_if<std::string>(&cell);
  if (!text) return {};
  std::string bytes;
  if (type == Jet3File::Memo) {
    Put(bytes, static_cast<std::uint32_t>(text->size()) | 0x80000000U);
    bytes += std::string(8, '\0');
  }
  return bytes + *text;
}

/// Where the variable columns begin, and where the last one ends, by bytes: the places' lower bytes from the last to
/// the first; from the last segment of 256 bytes to the first, which place is the first one in it; and their count.
std::string PlacesOf(const std::vector<std::size_t>& places, std::size_t maskBytes) {
  const std::size_t fixed = places.back() + places.size() + 1 + maskBytes;
  std::size_t segments = 0;
  while ((fixed + segments - 1) / 256 > segments) ++segments;
  std::string bytes;
  for (auto place = places.rbegin(); place != places.rend(); ++place) bytes += static_cast<char>(*place & 0xFF);
  for (std::size_t segment = segments; segment > 0; --segment) {
    const auto first = std::find_if(places.begin(), places.end(), [&](std::size_t at) { return at >= segment * 256; });
    bytes += first == places.end() ? '\xFF' : static_cast<char>(first - places.begin());
  }
  return bytes + static_cast<char>(places.size() - 1);
}

std::string RowBytes(const std::vector<Jet3File::Column>& columns, const Jet3File::Row& cells) {
  std::string mask((columns.size() + 7) / 8, '\0'), row(1, static_cast<char>(columns.size())), variable;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (IsFixed(columns[i])) row += FixedBytes(columns[i].type, cells[i]);
    if (cells[i] != FieldValue()) mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << i % 8);
  }
  std::vector<std::size_t> places = {row.size()};
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (IsFixed(columns[i])) continue;
    row += VariableBytes(columns[i].type, cells[i]);
    places.push_back(row.size());
  }
  return (places.size() > 1 ? row + PlacesOf(places, mask.size()) : row) + mask;
}

/// Rows stand from the end of a page to its front.
std::string DataPage(std::uint32_t table, const std::vector<std::string>& rows) {
  std::string page = {'\1', '\1', '\0', '\0'};
  Put(page, table);
  Put(page, static_cast<std::uint16_t>(rows.size()));
  std::size_t place = kPage;
  for (const std::string& row : rows) Put(page, static_cast<std::uint16_t>(place -= row.size()));
  page.resize(kPage, '\0');
  place = kPage;
  for (const std::string& row : rows) page.replace(place -= row.size(), row.size(), row);
  return page;
}

/// As many pages as rows need.
std::vector<std::string> DataPages(std::uint32_t table, const std::vector<std::string>& rows) {
  std::vector<std::string> pages, of;
  std::size_t taken = 10;
  for (const std::string& row : rows) {
    if (taken + row.size() + 2 > kPage) {
      pages.push_back(DataPage(table, of));
      of.clear();
      taken = 10;
    }
    of.push_back(row);
    taken += row.size() + 2;
  }
  pages.push_back(DataPage(table, of));
  return pages;
}

std::string DefinitionPage(const std::vector<Jet3File::Column>& columns, std::size_t rows, std::uint32_t map) {
  const auto variables = static_cast<std::uint16_t>(
      std::count_if(columns.begin(), columns.end(), [](const auto& c) { return !IsFixed(c); }));
  const auto count = static_cast<std::uint16_t>(columns.size());
  std::string page = {'\2', '\1', 'V', 'C', '\0', '\0', '\0', '\0'};
  Put(page, std::uint32_t{0});
  Put(page, static_cast<std::uint32_t>(rows));
  Put(page, std::uint32_t{0});
  page += 'N';
  for (const std::uint16_t number : {count, variables, count}) Put(page, number);
  for (const std::uint32_t number : {0U, 0U, map, map}) Put(page, number);
  std::uint16_t number = 0, variable = 0, place = 0;
  for (const Jet3File::Column& column : columns) {
    std::string entry(18, '\0');
    entry[0] = static_cast<char>(column.type);
    PutAt(entry, 1, number);
    PutAt(entry, 3, variable);
    PutAt(entry, 5, number++);
    entry[13] = IsFixed(column) ? '\3' : '\2';
    PutAt(entry, 14, place);
    PutAt(entry, 16, IsFixed(column) ? WidthOf(column.type) : std::uint16_t{255});
    page += entry;
    if (IsFixed(column))
      place = static_cast<std::uint16_t>(place + WidthOf(column.type));
    else
      ++variable;
  }
  for (const Jet3File::Column& column : columns) page += static_cast<char>(column.name.size()) + column.name;
  page.resize(kPage, '\0');
  return page;
}

/// Which pages hold the rows of a table, a bit each.
std::string MapOf(std::size_t first, std::size_t count) {
  std::string map(kMapBytes, '\0');
  for (std::size_t page = first; page < first + count; ++page)
    map[5 + page / 8] = static_cast<char>(map[5 + page / 8] | 1 << page % 8);
  return map;
}

}  // namespace

void Jet3File::AddTable(const std::string& name, const std::vector<Column>& columns, const std::vector<Row>& rows) {
  tables_.push_back({name, columns, rows});
}

std::string Jet3File::Bytes() const {
  std::string header("\0\1\0\0Standard Jet DB\0\0", 21);
  header.resize(kPage, '\0');
  // The header is ciphered; this says that the other pages are not.
  header.replace(0x3E, 4, "\xFB\x8A\xBC\x4E");
  std::vector<std::string> pages(3), maps(1);
  pages[0] = header;
  Table catalogue{"MSysObjects", {{"Id", LongInt}, {"Name", Text}, {"Type", Int}}, {}};
  const auto addRows = [&](const Table& table, std::size_t definition) {
    std::vector<std::string> rows;
    for (const Row& row : table.rows) rows.push_back(RowBytes(table.columns, row));
    const auto data = DataPages(static_cast<std::uint32_t>(definition), rows);
    const std::string map = MapOf(pages.size(), data.size());
    pages.insert(pages.end(), data.begin(), data.end());
    return map;
  };
  for (const Table& table : tables_) {
    const std::size_t definition = pages.size();
    pages.push_back(
        DefinitionPage(table.columns, table.rows.size(), static_cast<std::uint32_t>(kMapsPage << 8 | maps.size())));
    maps.push_back(addRows(table, definition));
    catalogue.rows.push_back({static_cast<std::int64_t>(definition), table.name, std::int64_t{1}});
  }
  pages[kCatalogue] = DefinitionPage(catalogue.columns, catalogue.rows.size(), kMapsPage << 8);
  maps[0] = addRows(catalogue, kCatalogue);
  pages[kMapsPage] = DataPage(0, maps);
  std::string bytes;
  for (const std::string& page : pages) bytes += page;
  return bytes;
}

}  // namespace velk::test
