#include "paper/page_header.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/dates.h"
#include "support/fake_printers.h"
#include "support/in_english.h"

namespace velk {
namespace {

using Calls = std::vector<std::string>;

class Sheet : public SheetRecording {
 public:
  bool Has(const std::string& call) const { return std::find(calls.begin(), calls.end(), call) != calls.end(); }
  Calls With(const std::string& part) const {
    Calls found;
    for (const std::string& call : calls)
      if (call.find(part) != std::string::npos) found.push_back(call);
    return found;
  }
};

struct TwoCurves : CurveSource {
  TwoCurves() {
    curves[0].name = "Pressure";
    curves[0].units = "psi";
    curves[0].max = 5000;
    curves[0].color = 0x0000FF;
    curves[1].name = std::string(300, 'n');
    curves[1].min = -1.5;
    curves[1].max = 20;
  }
  int Count() const override { return 2; }
  const Parameter& Curve(int slot) const override { return curves[slot - 1]; }
  Parameter curves[2];
};

const double kEvening = JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(22, 0, 0));
const PageTimes kOverMidnight{kEvening, TimeOfDay(1, 0, 0)};

class PageHeaderTest : public testing::Test {
 protected:
  void Draw(PageTarget target) {
    layout = LayOut(2, {}, {}, target);
    DrawHeader(sheet, curves, layout, kOverMidnight, {"Sans", 10}, test::English());
  }
  TwoCurves curves;
  PageLayout layout;
  Sheet sheet;
};

TEST_F(PageHeaderTest, HasTheFrameAtTheEdgesOfThePage) {
  Draw(PageTarget::Paper);
  for (const char* line : {"line 20 20 190 20 000000 w0.944882", "line 190 20 190 257 000000 w0.944882",
                           "line 190 257 20 257 000000 w0.944882", "line 20 257 20 20 000000 w0.944882",
                           "line 40 20 40 257 000000 w0.944882"})
    EXPECT_TRUE(sheet.Has(line)) << line;
}

TEST_F(PageHeaderTest, HasAGridOfTenBySixteen) {
  Draw(PageTarget::Preview);  // the plot is 34 to 277: 243 mm
  EXPECT_EQ(sheet.With("C0C0C0").size(), 9u + 15u);
  EXPECT_TRUE(sheet.Has("line 55 34 55 277 C0C0C0 w0.377953"));
  EXPECT_TRUE(sheet.Has("line 175 34 175 277 C0C0C0 w0.377953"));
  EXPECT_TRUE(sheet.Has("line 40 155.5 190 155.5 C0C0C0 w0.377953")) << "the eighth";
}

TEST_F(PageHeaderTest, LabelsFourIntervalsAndTheDateWhereItChanges) {
  Draw(PageTarget::Preview);  // quarters of 60.75 mm
  EXPECT_TRUE(sheet.Has("print 21 33 '22:00:00' 000000"));
  EXPECT_TRUE(sheet.Has("print 21 93.75 '23:00:00' 000000"));
  EXPECT_TRUE(sheet.Has("print 21 154.5 '00:00:00' 000000"));
  EXPECT_TRUE(sheet.Has("print 21 276 '02:00:00' 000000"));
  EXPECT_EQ(sheet.With("-26'"), (Calls{"print 21 31 '14-Mar-26' 000000", "print 21 152.5 '15-Mar-26' 000000"}));
  EXPECT_EQ(sheet.With("line 38 ").size(), 5u);
  EXPECT_TRUE(sheet.Has("print 28 24 'Time' 000000")) << "centred on 30, its foot at 26";
}

TEST_F(PageHeaderTest, KeepsTheFrameOutOfTheLastTime) {
  Draw(PageTarget::Preview);
  const auto at = [&](const std::string& call) { return std::find(sheet.calls.begin(), sheet.calls.end(), call); };
  const auto frame = at("line 190 277 20 277 000000 w0.944882"), cleared = at("fill 20.5 276 9 2 FFFFFF"),
             time = at("print 21 276 '02:00:00' 000000");
  ASSERT_TRUE(frame != sheet.calls.end() && cleared != sheet.calls.end() && time != sheet.calls.end());
  EXPECT_TRUE(frame < cleared && cleared < time);
}

TEST_F(PageHeaderTest, PrintsADateThatChangesAtTheEndBelowItsTime) {
  layout = LayOut(2, {}, {}, PageTarget::Preview);
  const PageTimes times{kEvening, TimeOfDay(0, 30, 0)};
  DrawHeader(sheet, curves, layout, times, {"Sans", 10}, test::English());
  EXPECT_TRUE(sheet.Has("print 21 276 '00:00:00' 000000"));
  EXPECT_TRUE(sheet.Has("print 21 278 '15-Mar-26' 000000"));
}

TEST_F(PageHeaderTest, HasARowForEachCurveInItsColour) {
  Draw(PageTarget::Paper);
  EXPECT_TRUE(sheet.Has("line 40 26 190 26 0000FF w0.944882"));
  EXPECT_TRUE(sheet.Has("print 41 24 '0' 0000FF"));
  EXPECT_TRUE(sheet.Has("print 185 24 '5000' 0000FF"));
  EXPECT_TRUE(sheet.Has("print 108 24 'Pressure (psi)' 0000FF")) << "14 letters, centred on 115";
  EXPECT_TRUE(sheet.Has("print 41 30 '-1.5' 000000"));
}

TEST_F(PageHeaderTest, ShortensANameThatWouldRunOverTheScale) {
  Draw(PageTarget::Paper);
  const Calls names = sheet.With("nnn");
  ASSERT_EQ(names.size(), 1u);
  EXPECT_NE(names[0].find("\u2026"), std::string::npos);
  EXPECT_TRUE(names[0].starts_with("print 46 ")) << "a millimetre behind -1.5: " << names[0];
}

TEST_F(PageHeaderTest, PlacesCommentsOfThePageAtTheirTimes) {
  layout = LayOut(2, {}, {}, PageTarget::Preview);
  InsertReportComments(sheet, layout, kOverMidnight,
                       {{kEvening - TimeOfDay(0, 0, 1), "before"},
                        {kEvening + TimeOfDay(2, 0, 0), "two\nlines"},
                        {kEvening + TimeOfDay(5, 0, 0), "behind"},
                        {kEvening, std::string(300, 'w')}},
                       {"Sans", 10});
  EXPECT_TRUE(sheet.With("before").empty());
  EXPECT_TRUE(sheet.With("behind").empty());
  EXPECT_EQ(sheet.With("two"), (Calls{"print 180 154.5 'two lines' 000000"})) << "9 letters, up to 189";
  ASSERT_EQ(sheet.With("www").size(), 1u);
  EXPECT_TRUE(sheet.With("www")[0].starts_with("print 41 33")) << "cut at the frame";
}

TEST_F(PageHeaderTest, PrintsACommentAtEachEndOfThePageWhateverTheLastBitsOfItsTime) {
  layout = LayOut(2, {}, {}, PageTarget::Preview);
  for (int day = 0; day < 60; ++day)
    for (int hour = 0; hour < 24; ++hour) {
      const auto at = [&](int later) {
        return JoinDateTime(DateSerial(2026, 3, 1) + day + (hour + later) / 24, TimeOfDay((hour + later) % 24, 0, 0));
      };
      const PageTimes times{at(0), TimeOfDay(1, 0, 0)};
      sheet.calls.clear();
      InsertReportComments(sheet, layout, times, {{at(0), "start"}, {at(4), "end"}}, {"Sans", 10});
      ASSERT_EQ(sheet.With("'start'").size(), 1u) << day << " " << hour;
      ASSERT_EQ(sheet.With("'end'").size(), 1u) << day << " " << hour;
    }
}

TEST_F(PageHeaderTest, TellsBelowTheFrameWhatItShows) {
  layout = LayOut(2, {}, {}, PageTarget::Paper);
  DrawFoot(sheet, layout, kOverMidnight, "/jobs/Well 7.mdb", kEvening, {"Sans", 10}, test::English());
  EXPECT_EQ(sheet.With("Printed 14-Mar-2026 22:00").size(), 1u);
  EXPECT_TRUE(sheet.Has("print 20 260 '14-Mar-2026 22:00:00 – 15-Mar-2026 02:00:00' 70665B"));
  EXPECT_EQ(sheet.With("'Well 7.mdb'").size(), 1u);
}

TEST_F(PageHeaderTest, GivesTheTextBlockTheSizeOfItsLongestLine) {
  const TextBlock lines{" Client : A", " Field  : Northern Field", " Well   : 7", " Job    : 1"};
  const PageBox box = SizeOf(sheet, lines, {"Sans", 10});
  EXPECT_NEAR(box.width, 1.1 * 24, 1e-9);
  EXPECT_EQ(box.height, 10);
  DrawTextBlock(sheet, {100, 20, box.width, box.height, true}, lines, {"Sans", 10});
  EXPECT_TRUE(sheet.Has("print 101.32 21 ' Client : A' 000000"));
  EXPECT_TRUE(sheet.Has("print 101.32 27 ' Job    : 1' 000000"));
}

}  // namespace
}  // namespace velk
