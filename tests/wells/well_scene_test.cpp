#include "wells/well_scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

#include "support/in_english.h"
#include "support/surface_recording.h"

namespace velk {
namespace {

void ExpectPoint(const Point4& point, double x, double y, double z) {
  EXPECT_NEAR(point.x, x, 1e-9);
  EXPECT_NEAR(point.y, y, 1e-9);
  EXPECT_NEAR(point.z, z, 1e-9);
  EXPECT_NEAR(point.w, 1, 1e-12);
}

TEST(Matrix4, MovesSwapsTurnsMirrorsAndScales) {
  const Point4 point{2, 3, 5};
  ExpectPoint(Matrix4::Translate(2, 1, 7)(point), 0, 2, -2);
  ExpectPoint(Matrix4::SwapAxes()(point), 2, 5, -3);
  ExpectPoint(Matrix4::RotateX(M_PI / 2)(point), 2, 5, -3);
  ExpectPoint(Matrix4::RotateY(M_PI / 2)(point), 5, 3, -2);
  ExpectPoint(Matrix4::RotateY(M_PI / 6)({1, 0, 0}), 0.8660254037844386, 0, -0.5);
  ExpectPoint(Matrix4::MirrorZ()(point), 2, 3, -5);
  ExpectPoint(Matrix4::ScaleXY(2, 10)(point), 4, 30, 5);
}

TEST(Matrix4, DoesTheFirstOfAProductFirst) {
  ExpectPoint((Matrix4::Translate(1, 1, 1) * Matrix4::ScaleXY(2, 2))({2, 3, 5}), 2, 4, 4);
  ExpectPoint((Matrix4::ScaleXY(2, 2) * Matrix4::Translate(1, 1, 1))({2, 3, 5}), 3, 5, 4);
}

WellView LevelView() {
  WellView view;
  view.tilt = 90;
  view.azimuth = 0;
  view.distance = 10'000;
  return view;
}

TEST(ViewMatrix, LooksLevelFromTheNorthAtATiltOf90) {
  // By hand: (-2 x, 2 z, 10 - y).
  ExpectPoint(ViewMatrix(LevelView())({1, 2, -3}), -2, -6, 8);
}

TEST(ViewMatrix, LooksDownAtATiltOf0) {
  WellView view = LevelView();
  view.tilt = 0;
  // From 10 above: what is a unit deeper is a unit farther away.
  EXPECT_NEAR(ViewMatrix(view)({0, 0, 0}).z, 10, 1e-9);
  EXPECT_NEAR(ViewMatrix(view)({0, 0, -1}).z, 11, 1e-9);
}

TEST(ViewMatrix, HasTheFocalPointInTheMiddleAtItsDistanceFromEverywhere) {
  for (double tilt : {0.0, 20.0, 60.0, 90.0, 130.0})
    for (double azimuth : {-180.0, -30.0, 0.0, 45.0, 180.0}) {
      WellView view = LevelView();
      view.tilt = tilt;
      view.azimuth = azimuth;
      ExpectPoint(ViewMatrix(view)({0, 0, 0}), 0, 0, 10);
    }
}

TEST(ViewMatrix, MovesTheFocalPointWithItsEastNegated) {
  WellView view = LevelView();
  view.focalEast = 1000;
  view.focalNorth = 2000;
  view.focalDepth = 3000;
  ExpectPoint(ViewMatrix(view)({-1, 2, 3}), 0, 0, 10);
}

TEST(OnScreen, PutsAPointByItsDistance) {
  // 511.5 times 2 / 8, and times 6 / 8, from the middle at 255.75
  const ScreenPoint point = OnScreen({-2, -6, 8});
  EXPECT_DOUBLE_EQ(point.x, 383.625);
  EXPECT_DOUBLE_EQ(point.y, 639.375);
}

TEST(OnScreen, LeavesAPointInThePlaneOfTheEye) {
  const ScreenPoint point = OnScreen({5, 6, 0});
  EXPECT_EQ(point.x, 0);
  EXPECT_EQ(point.y, 0);
}

std::vector<PathStation> StationsTo(double depth, double east = 0, double north = 0) {
  std::vector<PathStation> stations(2);
  stations[1].tvd = depth;
  stations[1].east = east;
  stations[1].north = north;
  return stations;
}

TEST(FrameOfAWell, HasTheNextPowerOfTenAsItsDepth) {
  struct Case {
    double deepest, depth, tick;
  };
  // The depth in whole thousands, plus one, against the power above it: bounds belong to no band.
  constexpr Case kCases[] = {
      {0, 10, 0.2},    {950, 10, 0.2},   {1500, 10, 1},     {2500, 10, 0.4},  {3500, 10, 1},
      {4500, 10, 0.6}, {5500, 10, 1},    {6500, 10, 0.8},   {7500, 10, 1},    {8999, 10, 1},
      {9000, 100, 2},  {15'000, 100, 2}, {19'000, 100, 10}, {25'000, 100, 4},
  };
  for (const Case& each : kCases) {
    const FrameSize frame = FrameOf(StationsTo(each.deepest));
    EXPECT_EQ(frame.depth, each.depth) << each.deepest;
    EXPECT_NEAR(frame.tick, each.tick, 1e-12) << each.deepest;
  }
}

TEST(FrameOfAWell, IsAsWideAsItGoesEitherWay) {
  EXPECT_EQ(FrameOf(StationsTo(1000)).width, 1);
  EXPECT_EQ(FrameOf(StationsTo(1000, 2500, 100)).width, 3);
  EXPECT_EQ(FrameOf(StationsTo(1000, 10, -999)).width, 1);
  EXPECT_EQ(FrameOf(StationsTo(1000, 10, -1000)).width, 2);
  EXPECT_EQ(FrameOf({}).width, 1);
}

TEST(WellSceneBuilt, HasTheStationsBehindThePointsOfTheFrame) {
  WellScene scene;
  scene.Build(StationsTo(2500, 300, -400), {}, LevelView());
  ASSERT_EQ(scene.ScenePoints().size(), 56U);
  ASSERT_EQ(scene.ViewPoints().size(), 56U);
  ASSERT_EQ(scene.ScreenPoints().size(), 56U);
  ExpectPoint(scene.ScenePoints()[54], 0, 0, 0);
  ExpectPoint(scene.ScenePoints()[55], 0.3, -0.4, -2.5);
  EXPECT_TRUE(scene.TubePoints().empty());
}

TEST(WellSceneBuilt, HasItsSurfacesWhereTheyWereMoved) {
  WellView view = LevelView();
  view.shift = {2000, 3000, -4000};
  WellScene scene;
  scene.Build(StationsTo(2500), {}, view);
  for (std::size_t i = 0; i < 18; ++i) EXPECT_EQ(scene.ScenePoints()[i].z, -2);
  for (std::size_t i = 18; i < 36; ++i) EXPECT_EQ(scene.ScenePoints()[i].x, 3);
  for (std::size_t i = 36; i < 54; ++i) EXPECT_EQ(scene.ScenePoints()[i].y, -4);
  ExpectPoint(scene.ScenePoints()[18], 3, -1, 0);
  ExpectPoint(scene.ScenePoints()[20], 3, 1, -10);
}

TEST(WellSceneBuilt, LabelsDepthsAndDistances) {
  WellScene scene;
  scene.Build(StationsTo(2500), {}, LevelView());
  std::multiset<std::string> labels;
  for (const SceneLabel& label : scene.Labels())
    labels.insert(std::string(label.prefix.english) + std::to_string(static_cast<int>(std::lround(label.value))));
  EXPECT_EQ(labels,
            (std::multiset<std::string>{"W  1000",  "E  0",     "E  1000",  "S  1000",   "N  0",    "N  1000", "TVD 0",
                                        "TVD 2500", "TVD 5000", "TVD 7500", "TVD 10000", "S  1000", "N  1000", "TVD 0",
                                        "TVD 2500", "TVD 5000", "TVD 7500", "TVD 10000", "W  1000", "E  1000"}));
}

TEST(WellTube, IsACircleAroundThePath) {
  WellView view = LevelView();
  view.casing = true;
  view.casingSize = 1;
  std::vector<PathStation> stations(2);
  stations[1].inclination = M_PI / 2;
  WellScene scene;
  scene.Build(stations, {}, view);
  ASSERT_EQ(scene.TubePoints().size(), 24U);
  // 3.5 inches at 2 x 0.015 an inch.
  ExpectPoint(scene.TubePoints()[0], 0.105, 0, 0);
  ExpectPoint(scene.TubePoints()[3], 0, 0.105, 0);
  ExpectPoint(scene.TubePoints()[6], -0.105, 0, 0);
  // Level to the north: the circle stands upright.
  ExpectPoint(scene.TubePoints()[12], 0.105, 0, 0);
  ExpectPoint(scene.TubePoints()[15], 0, 0, 0.105);
}

TEST(WellTube, HasHalfTheSizeOfTheSectionThatItIsIn) {
  WellView view = LevelView();
  view.casing = true;
  std::vector<PathStation> stations(3);
  stations[1].depth = 500;
  stations[2].depth = 2000;
  const std::vector<WellSection> sections = {{0, 500, 12, 9}, {500, 900, 8, 7}};
  WellScene scene;
  scene.Build(stations, sections, view);
  EXPECT_NEAR(scene.TubePoints()[0].x, 6 * 0.015, 1e-12);
  EXPECT_NEAR(scene.TubePoints()[12].x, 6 * 0.015, 1e-12);
  EXPECT_NEAR(scene.TubePoints()[24].x, 4 * 0.015, 1e-12) << "below the last section its size stays";
}

class WellDrawing : public testing::Test {
 protected:
  int Count(const std::string& start) const {
    return static_cast<int>(std::count_if(surface.calls.begin(), surface.calls.end(),
                                          [&](const std::string& call) { return call.starts_with(start); }));
  }
  int LinesOf(const std::string& colour) const {
    return static_cast<int>(std::count_if(surface.calls.begin(), surface.calls.end(), [&](const std::string& call) {
      return call.starts_with("line ") && call.find(" " + colour + " ") != std::string::npos;
    }));
  }
  void Draw(std::span<const PathStation> stations, double dot = 0) {
    view.distance = 60'000;
    view.tilt = 60;
    view.azimuth = 30;
    scene.Build(stations, {}, view);
    scene.Draw(surface, {0, 0, 51'150, dot}, {{0xAA0000, 0xBB0000, 0xCC0000}, 0}, test::English());
  }

  WellView view = LevelView();
  WellScene scene;
  SurfaceRecording surface{60'000, 60'000};
  int marksUnderLabels = 0;
};

TEST_F(WellDrawing, HasElevenLinesASurfaceAndThePathInGreen) {
  std::vector<PathStation> stations(5);
  for (std::size_t i = 0; i < 5; ++i) stations[i].tvd = static_cast<double>(i) * 600;
  Draw(stations);
  EXPECT_EQ(LinesOf("AA0000"), 11);
  EXPECT_EQ(LinesOf("BB0000"), 11);
  EXPECT_EQ(LinesOf("CC0000"), 11);
  EXPECT_EQ(LinesOf("00FF00"), 4);
}

TEST_F(WellDrawing, LeavesHiddenSurfacesOutWithTheirLabels) {
  view.hidden = {false, true, true};
  Draw(StationsTo(2500));
  EXPECT_EQ(LinesOf("AA0000"), 11);
  EXPECT_EQ(LinesOf("BB0000"), 0);
  EXPECT_EQ(LinesOf("CC0000"), 0);
  for (const std::string& call : surface.calls) EXPECT_EQ(call.find("TVD"), std::string::npos) << call;
}

TEST_F(WellDrawing, HasRingsAndTheLinesBetweenThemForATube) {
  view.casing = true;
  std::vector<PathStation> stations(3);
  for (std::size_t i = 0; i < 3; ++i) stations[i].tvd = static_cast<double>(i) * 600;
  Draw(stations);
  // Three rings of twelve, twelve lines between each two, and the path.
  EXPECT_EQ(LinesOf("00FF00"), 36 + 24 + 2);
}

TEST_F(WellDrawing, LeavesOutWhatFallsOnTheSameDots) {
  std::vector<PathStation> stations(2000);
  for (std::size_t i = 0; i < 2000; ++i) stations[i].tvd = static_cast<double>(i);
  Draw(stations, 150);
  EXPECT_GT(LinesOf("00FF00"), 5);
  EXPECT_LT(LinesOf("00FF00"), 40) << "2,000 units of depth are 1,500 of the surface or so";
}

TEST_F(WellDrawing, LeavesOutWhatLiesBehindTheEye) {
  std::vector<PathStation> stations(3);
  stations[1].north = 5000;
  stations[2].north = 20'000;
  view = LevelView();
  view.hidden = {true, true, true};
  scene.Build(stations, {}, view);
  scene.Draw(surface, {0, 0, 51'150, 0}, kColoursOnDark, test::English());
  EXPECT_EQ(LinesOf("00FF00"), 1) << "the first segment is a point in the middle, the second runs through the eye";
}

TEST_F(WellDrawing, StaysInItsSquare) {
  view.distance = 2000;
  scene.Build(StationsTo(9000, 4000, 4000), {}, view);
  scene.Draw(surface, {1000, 2000, 5115, 0}, kColoursOnPaper, test::English());
  int lines = 0, cut = 0;
  for (const std::string& call : surface.calls) {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    if (std::sscanf(call.c_str(), "line %lf %lf %lf %lf", &x1, &y1, &x2, &y2) != 4) continue;
    ++lines;
    for (const double x : {x1, x2}) cut += std::fabs(x - 1000) < 0.1 || std::fabs(x - 6115) < 0.1 ? 1 : 0;
    EXPECT_GE(std::min(x1, x2), 999.9);
    EXPECT_GE(std::min(y1, y2), 1999.9);
    EXPECT_LE(std::max(x1, x2), 6115.1);
    EXPECT_LE(std::max(y1, y2), 7115.1);
  }
  EXPECT_GT(lines, 5);
  EXPECT_GT(cut, 3);
}

/// Numbers of a call behind its word.
std::array<double, 4> NumbersOf(const std::string& call) {
  std::array<double, 4> numbers{};
  std::sscanf(call.c_str(), "%*s %lf %lf %lf %lf", &numbers[0], &numbers[1], &numbers[2], &numbers[3]);
  return numbers;
}

/// The boxes of the labels that were drawn, by their texts.
std::multimap<std::string, std::array<double, 4>> LabelsOf(const SurfaceRecording& surface) {
  std::multimap<std::string, std::array<double, 4>> labels;
  for (const std::string& call : surface.calls) {
    double x = 0, y = 0;
    char text[40] = {};
    if (std::sscanf(call.c_str(), "print %lf %lf '%39[^']", &x, &y, text) != 3) continue;
    labels.insert({text, {x, y, x + surface.TextWidth(text), y + surface.TextHeight(text)}});
  }
  return labels;
}

TEST_F(WellDrawing, PutsEachLabelOnGroundOfItsOwnInFrontOfItsMark) {
  int labels = 0;
  for (double azimuth = -180; azimuth < 180; azimuth += 15) {
    surface.calls.clear();
    view.tilt = 60;
    view.azimuth = azimuth;
    view.distance = 60'000;
    scene.Build(StationsTo(2500), {}, view);
    scene.Draw(surface, {0, 0, 51'150, 0}, kColoursOnDark, test::English());
    for (std::size_t i = 0; i < surface.calls.size(); ++i) {
      if (!surface.calls[i].starts_with("print ")) continue;
      ++labels;
      ASSERT_TRUE(surface.calls[i - 1].starts_with("fill ")) << surface.calls[i - 1];
      ASSERT_TRUE(surface.calls[i - 1].ends_with(" 1D1814")) << surface.calls[i - 1];
      const auto ground = NumbersOf(surface.calls[i - 1]), text = NumbersOf(surface.calls[i]);
      EXPECT_EQ(ground[0], text[0]);
      EXPECT_EQ(ground[1], text[1]);
      for (const std::string& call : surface.calls) {
        if (!call.starts_with("line ")) continue;
        const auto line = NumbersOf(call);
        const bool endsInIt = line[2] > ground[0] && line[2] < ground[0] + ground[2] && line[3] > ground[1] &&
                              line[3] < ground[1] + ground[3];
        if (endsInIt) ++marksUnderLabels;
      }
    }
  }
  EXPECT_GT(labels, 240) << "ten in each of 24 directions";
  EXPECT_LT(marksUnderLabels, 40) << "only where another surface's mark ends there";
}

TEST_F(WellDrawing, LeavesOutALabelThatWouldCoverThePath) {
  // Level from the north the labels of the plane to the north lie on its edge, which is the path, down to its end.
  view = LevelView();
  view.distance = 60'000;
  view.hidden = {true, false, true};
  scene.Build(StationsTo(6000), {}, view);
  scene.Draw(surface, {0, 0, 51'150, 0}, kColoursOnDark, test::English());
  const auto labels = LabelsOf(surface);
  for (const char* covering : {"TVD 0", "TVD 2500", "TVD 5000"}) EXPECT_EQ(labels.count(covering), 0U) << covering;
  for (const char* clear : {"TVD 7500", "TVD 10000"}) EXPECT_EQ(labels.count(clear), 1U) << clear;
}

TEST_F(WellDrawing, HasNoLabelOnThePathNorOnItsTubeFromAnySide) {
  view.casingSize = 9;
  for (const bool casing : {false, true})
    for (double azimuth = -180; azimuth < 180; azimuth += 15) {
      view.casing = casing;
      view.tilt = 60;
      view.azimuth = azimuth;
      view.distance = 60'000;
      surface.calls.clear();
      scene.Build(StationsTo(9000, 900, 700), {}, view);
      scene.Draw(surface, {0, 0, 51'150, 0}, kColoursOnDark, test::English());
      const auto labels = LabelsOf(surface);
      EXPECT_GT(labels.size(), 5U) << azimuth;
      for (const std::string& call : surface.calls) {
        if (call.find(" 00FF00 ") == std::string::npos) continue;
        const auto line = NumbersOf(call);
        for (int step = 0; step <= 400; ++step) {
          const double x = line[0] + (line[2] - line[0]) * step / 400, y = line[1] + (line[3] - line[1]) * step / 400;
          for (const auto& [text, box] : labels)
            EXPECT_FALSE(x > box[0] && x < box[2] && y > box[1] && y < box[3]) << text << " at " << azimuth;
        }
      }
    }
}

TEST_F(WellDrawing, KeepsItsLabelsWhereTheWellLiesBehindTheEye) {
  // Straight down from 8.5 above the wellhead, and points of the path 8.9 above it.
  view.tilt = 0;
  view.distance = 8500;
  std::vector<PathStation> stations(2);
  stations[1].tvd = -8900;
  const auto draw = [&] {
    surface.calls.clear();
    scene.Build(stations, {}, view);
    scene.Draw(surface, {0, 0, 51'150, 0}, kColoursOnDark, test::English());
    return LabelsOf(surface);
  };
  const auto labels = draw();
  ASSERT_GT(labels.size(), 3U);
  const Matrix4 matrix = ViewMatrix(view);
  const double perEast = OnScreen(matrix({1, 0, 8.9})).x - OnScreen(matrix({0, 0, 8.9})).x;
  const double perNorth = OnScreen(matrix({0, 1, 8.9})).y - OnScreen(matrix({0, 0, 8.9})).y;
  for (const auto& [text, box] : labels) {
    // Mirrored by the division, it would be seen in the middle of the label.
    const double x = (box[0] + box[2]) / 200, y = (box[1] + box[3]) / 200;
    PathStation station = stations[1];
    station.east = (x - kHalfWidth / 2) / perEast * 1000;
    station.north = (y - kHalfWidth / 2) / perNorth * 1000;
    const ScreenPoint mirrored = OnScreen(matrix({station.east / 1000, station.north / 1000, 8.9}));
    EXPECT_NEAR(mirrored.x, x, 1e-6);
    EXPECT_NEAR(mirrored.y, y, 1e-6);
    stations.push_back(station);
  }
  EXPECT_EQ(draw(), labels);
}

TEST_F(WellDrawing, HasNoLabelOnAnother) {
  for (double azimuth = -180; azimuth < 180; azimuth += 15) {
    view.azimuth = azimuth;
    scene.Build(StationsTo(2500), {}, view);
    surface.calls.clear();
    scene.Draw(surface, {0, 0, 20'000, 0}, kColoursOnDark, test::English());
    std::vector<std::array<double, 4>> boxes;
    for (const std::string& call : surface.calls) {
      double x = 0, y = 0;
      char text[40] = {};
      if (std::sscanf(call.c_str(), "print %lf %lf '%39[^']", &x, &y, text) != 3) continue;
      const std::array<double, 4> box = {x, y, x + 100.0 * static_cast<double>(std::string(text).size()), y + 200};
      for (const auto& other : boxes)
        EXPECT_FALSE(box[0] < other[2] && other[0] < box[2] && box[1] < other[3] && other[1] < box[3]) << call;
      boxes.push_back(box);
    }
    EXPECT_GT(boxes.size(), 3U);
  }
}

}  // namespace
}  // namespace velk
