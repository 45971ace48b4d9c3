#include "instruments/decoders/page_readers.h"

#include <gtest/gtest.h>

#include "base/errors.h"

namespace velk {
namespace {

ErrorNumber NumberOf(const std::function<void()>& raises) {
  try {
    raises();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return {};
}

// --- Named cells ---

const std::string kNamedCells =
    "\x01\x02<HTML><Body BGCOLOR=white><TABLE>\r\n"
    "<tr><td>1Var</td><td><b>  12.5 &nbsp;psi</b></td></tr>\r\n"
    "<tr><td>2Var</td><td><b>-0.250&nbsp;&deg;C</b></td></tr>\r\n"
    "</TABLE></Body></HTML>";

TEST(NamedCells, GiveTheTextOfEachValueBehindABlank) {
  EXPECT_EQ(LineFromNamedCells(kNamedCells, "09:30:15", 2), "09:30:15 12.5 -0.250");
}

TEST(NamedCells, LeaveFurtherCellsOut) {
  EXPECT_EQ(LineFromNamedCells(kNamedCells, "09:30:15", 1), "09:30:15 12.5");
  EXPECT_EQ(LineFromNamedCells(kNamedCells, "09:30:15", 0), "09:30:15");
}

TEST(NamedCells, AreCountedWithAllTheirDigits) {
  std::string page, expected = "09:30:15";
  for (int i = 1; i <= 64; ++i) {
    page += "<tr><td>" + std::to_string(i) + "Var</td><td><i>" + std::to_string(i * 3) + "&nbsp;</i></td></tr>";
    expected += " " + std::to_string(i * 3);
  }
  EXPECT_EQ(LineFromNamedCells(page, "09:30:15", 64), expected);
}

TEST(NamedCells, TakeAnyTextForAValue) {
  EXPECT_EQ(LineFromNamedCells("1Var<td>> &nbsp2Var<td>>n/a&nbsp", "09:30:15", 2), "09:30:15  n/a");
}

TEST(NamedCells, RaiseWhereACellIsMissing) {
  for (const char* page : {"", "<html></html>", "1Var<td>12.5</td>", "1Var<td>>12.5&nbsp;", "1Var<TD>>1&nbsp;",
                           "1var<td>>1&nbsp;2var<td>>2&nbsp;"})
    EXPECT_EQ(NumberOf([&] { LineFromNamedCells(page, "09:30:15", 2); }), ErrorNumber::InvalidArgument) << page;
}

TEST(NamedCells, RaiseOnEveryPageThatIsCutAheadOfTheLastValue) {
  const std::size_t last = kNamedCells.rfind("&nbsp") + 5;
  for (std::size_t length = 0; length < kNamedCells.size(); ++length) {
    const std::string page = kNamedCells.substr(0, length);
    if (length < last)
      EXPECT_THROW(LineFromNamedCells(page, "09:30:15", 2), RuntimeError) << length;
    else
      EXPECT_EQ(LineFromNamedCells(page, "09:30:15", 2), "09:30:15 12.5 -0.250") << length;
  }
}

// --- The operator panel's page ---

const std::string kPanel =
    "<HTML><table><tr><th>Name</th></tr>\n"
    "<tr><td>Pressure</td><td><b> 1250.50 &nbsp;</b></td><td>psi</td></tr>\n"
    "<tr><td>Rate</td><td class=x><b>-3&nbsp;</b></td></tr>\n"
    "</table>";

TEST(PanelPage, GivesTheNumberOfEachRowBehindTheFirst) {
  EXPECT_EQ(LineFromPanelPage(kPanel, "09:30:15", 2), "09:30:15 1250.5 -3");
}

TEST(PanelPage, DropsTwoTagsOfACell) {
  // The second cell's own tag and the one in it; a third one would be read as text, which is no number.
  EXPECT_EQ(LineFromPanelPage("</tr><td>n</td><td><b><i>5&nbsp;</td></tr>", "09:30:15", 1), "09:30:15 0");
  EXPECT_EQ(LineFromPanelPage("</tr><td>n</td><td><b>5&nbsp;</td></tr>", "09:30:15", 1), "09:30:15 5");
}

TEST(PanelPage, ReadsTextAsZero) {
  EXPECT_EQ(LineFromPanelPage("</tr></td><td><b>fail&nbsp;</td>", "09:30:15", 1), "09:30:15 0");
  EXPECT_EQ(LineFromPanelPage("</tr></td><td><b>&nbsp;</td>", "09:30:15", 1), "09:30:15 0");
}

TEST(PanelPage, RaisesWhereACellIsMissing) {
  for (const char* page : {"", "<html></html>", "</tr></td><td><b>5</td></tr>", "</tr></td><td>5&nbsp;</td></tr>",
                           "</tr></td><td><b>5&nbsp;", "</TR></TD><TD><B>5&nbsp;</TD></TR>"})
    EXPECT_EQ(NumberOf([&] { LineFromPanelPage(page, "09:30:15", 1); }), ErrorNumber::InvalidArgument) << page;
}

TEST(PanelPage, RaisesForANumberBeyondAll) {
  EXPECT_EQ(NumberOf([] { LineFromPanelPage("</tr></td><td><b>1e999&nbsp;</td>", "09:30:15", 1); }),
            ErrorNumber::Overflow);
}

TEST(PanelPage, RaisesOnEveryPageThatIsCutAheadOfTheLastCell) {
  const std::size_t last = kPanel.rfind("</td>") + 5;
  for (std::size_t length = 0; length < last; ++length)
    EXPECT_THROW(LineFromPanelPage(kPanel.substr(0, length), "09:30:15", 2), RuntimeError) << length;
  EXPECT_EQ(LineFromPanelPage(kPanel.substr(0, last), "09:30:15", 2), "09:30:15 1250.5 -3");
}

// --- The table ---

const std::string kTable =
    "HTTP junk<HTML><p>Time&nbsp;09:30:15</p><table>\n"
    "<tr><td>1</td><td>Pressure</td><td>psi</td><td class=\"v\"><b> 12.5 </b></td></tr>\n"
    "<tr><td>2</td><td>Rate</td><td>bpm</td><td>-3</td></tr></table>";

TEST(TablePage, GivesItsOwnTimeAndTheFourthCellOfEveryRow) {
  EXPECT_EQ(LineFromTable(kTable, ","), "09:30:15,12.5,-3");
}

TEST(TablePage, ReadsARowThatNothingFollowsOn) {
  EXPECT_EQ(LineFromTable("&nbsp;09:30:15<tr><td<td<td<td>7</", " "), "09:30:15 7");
}

TEST(TablePage, TakesTheTextBehindTheLastTag) {
  EXPECT_EQ(LineFromTable("&nbsp;09:30:15<tr><td><td><td><td><a href=x><b>7&nbsp;</b></a>", " "), "09:30:15 7&nbsp;");
  EXPECT_EQ(LineFromTable("&nbsp;09:30:15<tr><td><td><td><td 7 </td>", " "), "09:30:15 7");
}

TEST(TablePage, HasNoRowsWithoutThem) {
  EXPECT_EQ(LineFromTable("&nbsp;09:30:15<TR><TD>", ","), "09:30:15");
  EXPECT_EQ(LineFromTable("", ","), "");
  EXPECT_EQ(LineFromTable("&nbsp;09:3", ","), "09:3");
}

TEST(TablePage, ReadsNoMoreThanOneRowBeyondAllParameters) {
  std::string page = "&nbsp;09:30:15";
  for (int i = 1; i <= 20'000; ++i) page += "<tr><td<td<td<td";
  const std::string line = LineFromTable(page + ">" + std::string(500'000, '7') + "</", ",");
  EXPECT_EQ(std::count(line.begin(), line.end(), ','), 65);
}

TEST(TablePage, RaisesForARowThatIsCut) {
  for (const char* page : {"<tr>", "<tr><td>1</td>", "<tr><td><td><td><td>7"})
    EXPECT_EQ(NumberOf([&] { LineFromTable(page, ","); }), ErrorNumber::InvalidArgument) << page;
}

TEST(TablePage, GivesOrRaisesButNeverInventsAValueWhereverItIsCut) {
  for (std::size_t length = 0; length < kTable.size(); ++length) {
    const std::string page = kTable.substr(0, length);
    try {
      const std::string line = LineFromTable(page, ",");
      EXPECT_TRUE(std::string("09:30:15,12.5,-3").starts_with(line)) << line;
    } catch (const RuntimeError&) {
    }
  }
}

// --- The text cleaner ---

TEST(TrimPageText, DropsLineEndsBlanksColonsSemicolonsAndFixedBlanks) {
  EXPECT_EQ(TrimPageText("\r\n : ;12.5"), "12.5");
  EXPECT_EQ(TrimPageText("&nbsp;&nbsp; : &nbsp12.5&nbsp;"), "12.5&nbsp;");
  EXPECT_EQ(TrimPageText("12.5 ; "), "12.5 ; ");
}

TEST(TrimPageText, EndsWhenNothingIsLeft) {
  EXPECT_EQ(TrimPageText(""), "");
  EXPECT_EQ(TrimPageText("&nbsp"), "");
  EXPECT_EQ(TrimPageText(" \r\n:;"), "");
  EXPECT_EQ(TrimPageText("&nbs"), "&nbs");
  EXPECT_EQ(TrimPageText("\t5"), "\t5");
}

}  // namespace
}  // namespace velk
