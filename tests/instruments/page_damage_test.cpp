// Pages of which a single byte has changed. What may be read from them is found once more by patterns over the whole
// page.

#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <sstream>

#include "base/errors.h"
#include "instruments/decoders/page_readers.h"
#include "support/frame_damage.h"

namespace velk {
namespace {

const std::string kAny = "[^]*?";  ///< as little as will do

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

template <class Read>
std::optional<std::string> LineOf(Read read) {
  try {
    return read();
  } catch (const RuntimeError&) {
    return {};
  }
}

/// The number at the front of a cell, written as the line has it; cells of these pages hold few digits.
std::string NumberAtFront(const std::string& cell) {
  std::smatch number;
  static const std::regex picture("^[ \\t]*([+-]?)(\\d*)(?:\\.(\\d*))?(?:[eE]([+-]?\\d+))?");
  std::regex_search(cell, number, picture);
  const bool hasDigits = number[2].length() + number[3].length() > 0;
  if (!hasDigits) return "0";
  const double value =
      std::stod("0" + number[2].str() + "." + number[3].str() + "0e" + (number[4].matched ? number[4].str() : "0"));
  std::ostringstream text;
  text << std::uppercase;
  text.precision(15);
  text << (number[1] == "-" && value != 0 ? -value : value);
  return text.str();
}

TEST(DamagedPage, OfNamedCellsGivesOnlyWhatStandsInItsCells) {
  const std::string page = "<tr><td>1Var</td><td><b> 12.5 &nbsp;</b></td><td>2Var</td><td><b>-3&nbsp;</b></td></tr>";
  const std::string cell = kAny + "<td>" + kAny + ">(" + kAny + ")&nbsp";
  const std::regex cells("1Var" + cell + kAny + "2Var" + cell);
  int lines = 0;
  test::ForEveryChangedByte(page, [&](const std::string& changed) {
    std::optional<std::string> expected;
    std::smatch found;
    if (std::regex_search(changed, found, cells)) expected = "09:30:15 " + Trimmed(found[1]) + " " + Trimmed(found[2]);
    EXPECT_EQ(LineOf([&] { return LineFromNamedCells(changed, "09:30:15", 2); }), expected) << changed;
    lines += expected ? 1 : 0;
  });
  EXPECT_GT(lines, 1000);
}

TEST(DamagedPage, OfAPanelGivesOnlyWhatStandsInItsCells) {
  const std::string page =
      "<tr></tr><tr><td>a</td><td><b> 1250 &nbsp;</b></td></tr><tr><td>b</td><td><b>-3&nbsp;</b></td></tr>";
  const std::regex cell("</tr>" + kAny + "</td>(" + kAny + ")</td>"), number("^[^>]*>[^>]*>(" + kAny + ")&nbsp");
  int lines = 0;
  test::ForEveryChangedByte(page, [&](const std::string& changed) {
    std::optional<std::string> expected = "09:30:15";
    std::string rest = changed;
    for (int row = 1; row <= 2 && expected; ++row) {
      std::smatch found, digits;
      const std::string text = std::regex_search(rest, found, cell) ? found[1].str() : "";
      if (std::regex_search(text, digits, number))
        *expected += " " + NumberAtFront(digits[1]);
      else
        expected.reset();
      rest = rest.substr(found.empty() ? 0 : static_cast<std::size_t>(found.position(1)));
    }
    EXPECT_EQ(LineOf([&] { return LineFromPanelPage(changed, "09:30:15", 2); }), expected) << changed;
    lines += expected ? 1 : 0;
  });
  EXPECT_GT(lines, 1000);
}

TEST(DamagedPage, OfATableGivesOnlyWhatStandsInItsCells) {
  const std::string page = "&nbsp;09:30:15<tr><td>1<td>p<td>u<td><b> 12.5</b><tr><td>2<td>q<td>u<td>-3</td>";
  const std::regex time("&nbsp;([^]{0,8})"), row("<tr>" + kAny + "(<td" + kAny + "){3}<td(" + kAny + ")</");
  int lines = 0;
  test::ForEveryChangedByte(page, [&](const std::string& changed) {
    std::smatch found;
    std::optional<std::string> expected = std::regex_search(changed, found, time) ? found[1].str() : "";
    std::string rest = changed;
    while (expected && rest.find("<tr>") != std::string::npos) {
      if (!std::regex_search(rest, found, row)) {
        expected.reset();
        break;
      }
      const std::string cell = found[2];
      *expected += "," + Trimmed(cell.substr(cell.rfind('>') + 1));
      rest = rest.substr(static_cast<std::size_t>(found.position(2)));
    }
    EXPECT_EQ(LineOf([&] { return LineFromTable(changed, ","); }), expected) << changed;
    lines += expected ? 1 : 0;
  });
  EXPECT_GT(lines, 1000);
}

}  // namespace
}  // namespace velk
