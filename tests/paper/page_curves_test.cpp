#include "paper/page_curves.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "base/dates.h"
#include "graphs/wrapping.h"
#include "platform/drawing/painted_surface.h"
#include "support/surface_recording.h"

namespace velk {
namespace {

constexpr double kSecond = 1.0 / 86400;

struct Curves : CurveSource {
  int Count() const override { return static_cast<int>(all.size()); }
  const Parameter& Curve(int slot) const override { return all[static_cast<std::size_t>(slot) - 1]; }
  std::vector<Parameter> all;
};

Curves OneCurve(bool wraps = false) {
  Curves curves;
  Parameter curve;
  curve.min = 0;
  curve.max = 100;
  curve.color = 0x0000FF;
  curve.Wrapping = wraps;
  curves.all.push_back(curve);
  return curves;
}

const double kStart = JoinDateTime(DateSerial(2026, 3, 14), TimeOfDay(9, 30, 0));

/// A page of 229 mm from 28 to 257: 229 seconds, a second a millimetre.
const PageTimes kTimes{kStart, 229 * kSecond / 4};
constexpr double kDots = 25.4 * 10;  ///< an inch: ten a millimetre

/// The lines of a page, in millimetres.
std::vector<std::string> Lines(const PageCurves& page) {
  SurfaceRecording paper(210, 297);
  page.Draw(paper, 1);
  return paper.calls;
}

struct Page {
  explicit Page(Curves given, double dots = kDots, const PageTimes& times = kTimes)
      : curves(std::move(given)), layout(LayOut(1, {}, {}, PageTarget::Paper)), page(curves, layout, times, dots) {}
  void Plot(double first, double second, float from, float to) {
    page.PlotLine(1, kStart + first * kSecond, kStart + second * kSecond, from, to);
  }

  Curves curves;
  PageLayout layout;
  PageCurves page;
};

using Calls = std::vector<std::string>;

TEST(PageCurvesTest, PlaceValuesAcrossAndTimesDown) {
  Page page(OneCurve());
  page.Plot(0, 10, 0, 100);
  EXPECT_EQ(Lines(page.page), (Calls{"line 40 28 190 38 0000FF w1"}));
}

TEST(PageCurvesTest, CutACurveAtTheFrame) {
  Page page(OneCurve());
  page.Plot(0, 10, 50, 150);  // leaves the scale half way
  EXPECT_EQ(Lines(page.page), (Calls{"line 115 28 190 33 0000FF w1"}));
}

TEST(PageCurvesTest, WrapACurveRoundItsScale) {
  Page page(OneCurve(true));
  page.Plot(0, 10, 50, 150);
  const Calls lines = Lines(page.page);
  ASSERT_EQ(lines.size(), 3u) << "as it is, moved down, and up again while an end lies below the scale";
  EXPECT_EQ(lines[0], "line 115 28 190 33 0000FF w1");
  EXPECT_EQ(lines[1], "line 40 33 115 38 0000FF w1");
  EXPECT_EQ(lines[2], lines[0]);
}

TEST(PageCurvesTest, LeaveAGapOpenFrom100SecondsOn) {
  Page joined(OneCurve());
  joined.Plot(0, 99, 10, 20);
  EXPECT_EQ(Lines(joined.page), (Calls{"line 55 28 70 127 0000FF w1"}));
  Page apart(OneCurve());
  apart.Plot(0, 101, 10, 20);
  EXPECT_EQ(Lines(apart.page), (Calls{"line 70 129 70 129 0000FF w1"})) << "the second point alone";
}

TEST(PageCurvesTest, HaveAGapAt100SecondsWhateverTheLastBitsOfTheTimes) {
  for (int hour = 0; hour < 24; ++hour)
    for (int minute = 0; minute < 58; ++minute) {
      const double day = DateSerial(2026, 3, 14);
      const PageTimes times{JoinDateTime(day, TimeOfDay(hour, minute, 0)), kTimes.step};
      Page page(OneCurve(), kDots, times);
      page.page.PlotLine(1, times.start, JoinDateTime(day, TimeOfDay(hour, minute, 100)), 10, 20);
      ASSERT_EQ(Lines(page.page), (Calls{"line 70 128 70 128 0000FF w1"})) << hour << ":" << minute;
    }
}

TEST(PageCurvesTest, DrawAPointOfAValueThatIsAlone) {
  const float none = std::nanf("");
  Page page(OneCurve());
  for (const auto& [second, value] :
       {std::pair(0, 20.0f), std::pair(150, 30.0f), std::pair(160, none), std::pair(170, 40.0f), std::pair(180, none)})
    page.page.Take(kStart + second * kSecond, std::vector<float>{value});
  page.page.Finish();
  EXPECT_EQ(Lines(page.page),
            (Calls{"line 70 28 70 28 0000FF w1", "line 85 178 85 178 0000FF w1", "line 100 198 100 198 0000FF w1"}))
      << "ahead of a gap, behind it, between two empty fields";
}

TEST(PageCurvesTest, KeepLeastAndMostOfWhatLiesInOneRowOfDots) {
  Page page(OneCurve());
  for (int i = 0; i < 1000; ++i) page.Plot(50, 50, i == 500 ? 90 : 20, i == 499 ? 90 : 20);
  EXPECT_EQ(Lines(page.page), (Calls{"line 70 78 175 78 0000FF w1"})) << "20 to 90 of 100";
}

TEST(PageCurvesTest, DrawNothingOfWhatIsNoNumber) {
  Page page(OneCurve(true));
  const float nan = std::nanf(""), inf = std::numeric_limits<float>::infinity();
  for (const float bad : {nan, inf, -inf}) {
    page.Plot(0, 1, 10, bad);
    page.Plot(0, 1, bad, bad);
  }
  page.Plot(0, std::nan(""), 10, 10);
  EXPECT_EQ(page.page.LineCount(), 0u);
}

TEST(PageCurvesTest, DrawNothingOnAScaleWithoutLength) {
  Curves curves = OneCurve();
  curves.all[0].max = 0;
  Page page(curves);
  page.Plot(0, 1, 10, 20);
  EXPECT_EQ(page.page.LineCount(), 0u);
}

TEST(PageCurvesTest, HavePensOfTheDevice) {
  EXPECT_EQ(PenOf(PageTarget::Preview), 3);
  EXPECT_NEAR(Convert(PenOf(PageTarget::Paper), Unit::Pixel, Unit::Millimetre), 0.65625, 1e-9)
      << "0.025 of the pixels of an inch, 26.25 of which are a millimetre";
}

TEST(PageCurvesTest, AreDrawnForTheDotsThatAPrinterHas) {
  // 210 mm are 8.27 inches, which count as 8.
  EXPECT_NEAR(PaperDots(600 * 210 / 25.4 / 8), 600, 1e-9);
  EXPECT_NEAR(PaperDots(1200 * 210 / 25.4 / 8), 1200, 1e-9);
}

// --- The same dots as a drawing of every record ---

constexpr int kPictureDots = 300;

struct Sheet {
  Sheet() : image(2480, 3508, QImage::Format_RGB32), painter((image.fill(Qt::white), &image)) {}
  QImage image;
  QPainter painter;
  PaintedSurface surface{painter, Unit::Millimetre, kSheetWidth, kSheetHeight, kPictureDots};
};

using Records = std::vector<std::pair<double, float>>;

/// Each record's segment by itself, its ends at the nearest dot; the point of one that has nothing ahead of it.
void DrawEachRecord(Surface& surface, const PageLayout& layout, const Parameter& curve, const Records& records,
                    const PageTimes& times = kTimes) {
  surface.SetPenWidth(PenOf(PageTarget::Paper));
  const double dot = 25.4 / kPictureDots;
  const auto snap = [&](double mm) { return std::nearbyint(mm / dot) * dot; };
  const Scale scale{static_cast<float>(curve.min), static_cast<float>(curve.max)};
  for (std::size_t i = 0; i < records.size(); ++i) {
    const auto [time1, value1] = records[i == 0 ? 0 : i - 1];
    const auto [time2, value2] = records[i];
    const bool joined = std::lround((time2 - time1) * 86'400'000) < 100'000 && std::isfinite(value1);
    if (!std::isfinite(value2)) continue;
    WrappingPasses passes(joined ? value1 : value2, value2, scale, curve.Wrapping);
    for (WrappingPass pass; passes.Next(pass);) {
      const auto x = [&](double value) { return 40 + (value - scale.min) * 150.0 / (scale.max - scale.min); };
      const auto y = [&](double time) {
        return layout.plotTop + (time - times.start) * (layout.bottom - layout.plotTop) / (times.End() - times.start);
      };
      const PageSegment cut = ClipLine({x(pass.previous), y(joined ? time1 : time2), x(pass.value), y(time2)}, 40, 190);
      surface.Line(snap(cut.x1), snap(cut.y1), snap(cut.x2), snap(cut.y2), curve.color);
    }
  }
}

/// Noise with spikes of one sample, gaps, values far beyond the scale, steps back in time.
Records RandomRecords(std::uint32_t seed, int count) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> noise(-1, 1);
  Records records;
  double second = 0;
  float level = 50;
  for (int i = 0; i < count && second < 229; ++i) {
    const auto chance = random() % 1000;
    second += 229.0 / count * (chance == 0 ? -20 : chance < 3 ? 100 : 1);
    second = std::clamp(second, 0.0, 229.0);
    level = std::clamp(level + noise(random), -30.0f, 130.0f);
    const float spike = chance == 5 ? 400.0f : chance == 6 ? -250.0f : 0.0f;
    records.emplace_back(kStart + second * kSecond, chance == 7 ? std::nanf("") : level + spike);
  }
  return records;
}

TEST(PageCurvesTest, AreTheSameDotsAsADrawingOfEveryRecord) {
  for (std::uint32_t seed = 1; seed <= 6; ++seed) {
    const bool wraps = seed % 2 == 0;
    const auto records = RandomRecords(seed, seed < 3 ? 500 : 20'000);
    Page page(OneCurve(wraps), kPictureDots);
    for (const auto& [time, value] : records) page.page.Take(time, std::vector<float>{value});
    page.page.Finish();
    Sheet reduced, full;
    page.page.Draw(reduced.surface, PenOf(PageTarget::Paper));
    DrawEachRecord(full.surface, page.layout, page.curves.all[0], records);
    EXPECT_EQ(reduced.image, full.image) << "seed " << seed;
    EXPECT_LT(page.page.LineCount(), 30'000u);
    if (seed >= 3) {
      EXPECT_LT(page.page.LineCount(), records.size()) << "seed " << seed;
    }
  }
}

/// Records of 16 days, 625 s a row of dots, so that gaps lie within rows too.
Records RecordsOfDays(std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> noise(-4, 4);
  const double day = DateSerial(2026, 3, 14);
  Records records;
  float level = 50;
  for (double second = 0; second < 16 * 86'400.0;) {
    level = std::clamp(level + noise(random), -10.0f, 110.0f);
    records.emplace_back(day + std::floor(second / 86'400) + TimeOfDay(0, 0, std::fmod(second, 86'400)), level);
    const int steps[] = {1, 5, 30, 99, 100, 101, 300, 2000};
    second += steps[random() % 8];
  }
  return records;
}

TEST(PageCurvesTest, LeaveGapsOpenWithinARowOfDots) {
  const PageTimes days{DateSerial(2026, 3, 14), 4};
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    const Records records = RecordsOfDays(seed);
    Page page(OneCurve(seed % 2 == 0), kPictureDots, days);
    const auto rowOf = [&](double time) {
      return std::nearbyint(page.layout.PlotY((time - days.start) / 16) / 25.4 * kPictureDots);
    };
    int within = 0;
    for (std::size_t i = 1; i < records.size(); ++i)
      within += records[i].first - records[i - 1].first > 99.5 * kSecond &&
                rowOf(records[i].first) == rowOf(records[i - 1].first);
    ASSERT_GT(within, 1000) << "gaps that both ends of lie in one row";
    for (const auto& [time, value] : records) page.page.Take(time, std::vector<float>{value});
    page.page.Finish();
    Sheet reduced, full;
    page.page.Draw(reduced.surface, PenOf(PageTarget::Paper));
    DrawEachRecord(full.surface, page.layout, page.curves.all[0], records, days);
    EXPECT_EQ(reduced.image, full.image) << "seed " << seed;
  }
}

TEST(PageCurvesTest, TakeRecordsAsTheyPlotTheirSegments) {
  for (std::uint32_t seed = 1; seed <= 4; ++seed) {
    Curves curves = OneCurve(seed % 2 == 0);
    curves.all.push_back(curves.all[0]);
    curves.all[1].min = 80;  // much of it lies outside, and the scale is upside down
    curves.all[1].max = 20;
    curves.all.push_back(curves.all[0]);
    curves.all[2].max = 0;  // no scale
    const auto records = RandomRecords(seed, 20'000);
    Page plotted(curves, kPictureDots), taken(curves, kPictureDots);
    for (std::size_t i = 0; i < records.size(); ++i) {
      const auto [time, value] = records[i];
      taken.page.Take(time, std::vector<float>(3, value));
      const auto [timeBefore, valueBefore] = i > 0 ? records[i - 1] : std::pair(std::nan(""), 0.0f);
      for (int slot = 1; slot <= 3; ++slot) plotted.page.PlotLine(slot, timeBefore, time, valueBefore, value);
    }
    taken.page.Finish();
    EXPECT_EQ(Lines(taken.page), Lines(plotted.page)) << "seed " << seed;
  }
}

TEST(PageCurvesTest, TakeASingleRecordForAPointAndTwoForARun) {
  Page page(OneCurve());
  page.page.Take(kStart, std::vector<float>{20});
  page.page.Finish();
  EXPECT_EQ(Lines(page.page), (Calls{"line 70 28 70 28 0000FF w1"}));
  page.page.Take(kStart, std::vector<float>{60});
  page.page.Take(kStart, std::vector<float>{40});
  page.page.Finish();
  EXPECT_EQ(Lines(page.page), (Calls{"line 70 28 130 28 0000FF w1"}));
}

}  // namespace
}  // namespace velk
