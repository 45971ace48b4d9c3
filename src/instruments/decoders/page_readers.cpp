#include "instruments/decoders/page_readers.h"

#include <cmath>

#include "base/errors.h"
#include "base/numbers.h"
#include "base/text.h"
#include "model/parameter.h"

namespace velk {

namespace {

constexpr std::string_view kFixedBlank = "&nbsp";
constexpr std::size_t kTimeOfPage = 8;
/// One row more than there can be parameters already makes a line that no check accepts. Rows that share a cell would
/// otherwise make gigabytes of a damaged page.
constexpr int kMostRows = kMaxParameters + 1;

/// What stands behind the first `mark`; nothing where there is none.
std::string_view Behind(std::string_view text, std::string_view mark) {
  const std::size_t found = text.find(mark);
  return found == std::string_view::npos ? std::string_view{} : text.substr(found + mark.size());
}

/// What stands ahead of the first `mark`. Raises InvalidArgument where there is none.
std::string_view Ahead(std::string_view text, std::string_view mark) {
  const std::size_t found = text.find(mark);
  if (found == std::string_view::npos) throw RuntimeError(ErrorNumber::InvalidArgument);
  return text.substr(0, found);
}

/// The text of the cell that `row` stands in: between the last tag ahead of the cell's first closing tag and that one.
std::string_view CellText(std::string_view row) {
  const std::string_view cell = Ahead(row, "</");
  const std::size_t tag = cell.rfind('>');
  return tag == std::string_view::npos ? cell : cell.substr(tag + 1);
}

}  // namespace

std::string LineFromNamedCells(std::string_view page, std::string_view time, int parameters) {
  std::string line(time);
  for (int i = 1; i <= parameters; ++i) {
    page = Behind(page, std::to_string(i) + "Var");
    page = Behind(Behind(page, "<td>"), ">");
    line.append(" ").append(Trim(Ahead(page, kFixedBlank)));
    page = Behind(page, kFixedBlank);
  }
  return line;
}

std::string LineFromPanelPage(std::string_view page, std::string_view time, int parameters) {
  std::string line(time);
  page = Behind(page, "</tr>");
  for (int i = 1; i <= parameters; ++i) {
    page = Behind(page, "</td>");
    const std::string_view cell = Behind(Behind(Ahead(page, "</td>"), ">"), ">");
    const double value = Val(Ahead(cell, kFixedBlank));
    if (!std::isfinite(value)) throw RuntimeError(ErrorNumber::Overflow);
    line.append(" ").append(NumberText(value));
    page = Behind(page, "</tr>");
  }
  return line;
}

std::string LineFromTable(std::string_view page, std::string_view delimiter) {
  std::string line(Behind(page, "&nbsp;").substr(0, kTimeOfPage));
  constexpr std::string_view kRow = "<tr>";
  std::size_t row = page.find(kRow);
  for (int rows = 0; row != std::string_view::npos && rows < kMostRows; ++rows, row = page.find(kRow)) {
    page = page.substr(row + kRow.size());
    for (int cell = 1; cell <= 4; ++cell) page = Behind(page, "<td");
    line.append(delimiter).append(Trim(CellText(page)));
  }
  return line;
}

std::string TrimPageText(std::string_view text) {
  for (;;) {
    const std::size_t kept = std::min(text.find_first_not_of("\r\n :;"), text.size());
    text.remove_prefix(kept);
    if (!text.starts_with(kFixedBlank)) return std::string(text);
    text.remove_prefix(kFixedBlank.size());
  }
}

}  // namespace velk
