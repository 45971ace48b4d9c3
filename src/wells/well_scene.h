#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "base/language.h"
#include "base/message_text.h"
#include "platform/drawing/segment_clip.h"
#include "platform/drawing/surface.h"
#include "wells/matrix.h"
#include "wells/survey_file.h"
#include "wells/trajectory.h"

namespace velk {

/// Reference surfaces, in the order of their controls.
enum class WellSurface { NorthEast, DepthNorth, DepthEast };
inline constexpr int kWellSurfaces = 3;
inline constexpr int kFramePoints = 54;
inline constexpr int kTubeSides = 12;
/// The half-size of the drawing in its own units; a picture shows this much of it from corner to corner.
inline constexpr double kHalfWidth = 1023.0 / 2;

/// What the operator looks from and at. Distances in depth units.
struct WellView {
  double tilt = 60;     ///< degrees
  double azimuth = 30;  ///< degrees
  double distance = 40'000;
  double focalEast = 0, focalNorth = 0, focalDepth = 0;
  std::array<double, kWellSurfaces> shift{};  ///< of the surfaces
  std::array<bool, kWellSurfaces> hidden{};
  bool casing = false;
  int casingSize = 0;  ///< place in the list of sizes, from 0
};

/// World to view: through the focal point and the eye to the axes of the screen.
Matrix4 ViewMatrix(const WellView& view);

struct ScreenPoint {
  double x = 0, y = 0;
};

/// The place of a view's point on the drawing; one in the plane of the eye has none and stays at 0.
ScreenPoint OnScreen(const Point4& view);

/// The sizes of the frame around a well, in thousands of depth units.
struct FrameSize {
  double width = 1;  ///< to either side
  double depth = 10;
  double tick = 1;  ///< length of a mark
};
FrameSize FrameOf(std::span<const PathStation> stations);

/// Where a scene is drawn on a surface, in its units.
struct ScenePlace {
  double left = 0, top = 0;
  double side = 1;
  double dot = 0;  ///< size of a dot of the device; 0: all is drawn
};

struct SceneColours {
  std::array<std::int32_t, kWellSurfaces> surfaces;
  std::int32_t ground;        ///< behind the labels
  std::int32_t path = 65280;  ///< of the tube, too
};
/// For a dark picture, and for paper.
inline constexpr SceneColours kColoursOnDark{{0xC4C83C, 0xFFA88F, 0x6B9AC9}, 0x1D1814};
inline constexpr SceneColours kColoursOnPaper{{0x7A7900, 0x933A1F, 0x1E4A7A}, 0xFFFFFF};

/// A label of the frame, at a point of the scene.
struct SceneLabel {
  int point;
  WellSurface surface;
  MessageText prefix;
  double value;  ///< depth units
};

/// The well and its frame as points, seen from somewhere.
class WellScene {
 public:
  /// Stations behind the 54 points of the frame. `sections` give the hole its radius; without them it is 3.5.
  void Build(std::span<const PathStation> stations, std::span<const WellSection> sections, const WellView& view);

  const FrameSize& Frame() const { return frame_; }
  const std::vector<Point4>& ScenePoints() const { return scenePoints_; }
  const std::vector<Point4>& ViewPoints() const { return viewPoints_; }
  const std::vector<ScreenPoint>& ScreenPoints() const { return screenPoints_; }
  const std::vector<Point4>& TubePoints() const { return tubePoints_; }
  const std::vector<SceneLabel>& Labels() const { return labels_; }

  /// Draws what was built into a square of the surface, whose font is set. What lies behind the eye is not drawn, nor
  /// what would fall on dots that the path and its tube have on them already, nor labels that would cover either.
  void Draw(Surface& surface, const ScenePlace& place, const SceneColours& colours, const Language& language) const;

 private:
  using Segments = std::vector<ClippedSegment>;

  void AddLine(WellSurface surface, const Point4& far, const Point4& tip, const MessageText& prefix, double value);
  void AddHorizontal();
  void AddVertical(WellSurface surface);
  void BuildTube(std::span<const PathStation> stations, std::span<const WellSection> sections);
  void Project();
  bool IsInFront(std::size_t point) const;
  void DrawFrame(Surface& surface, const ScenePlace& place, const SceneColours& colours) const;
  /// Both add what they have drawn.
  void DrawPath(Surface& surface, const ScenePlace& place, std::int32_t colour, Segments& drawn) const;
  void DrawTube(Surface& surface, const ScenePlace& place, std::int32_t colour, Segments& drawn) const;
  void DrawLabels(Surface& surface, const ScenePlace& place, const SceneColours& colours, const Language& language,
                  const Segments& well) const;

  WellView view_;
  FrameSize frame_;
  std::vector<Point4> scenePoints_, viewPoints_, tubePoints_, tubeViewPoints_;
  std::vector<ScreenPoint> screenPoints_, tubeScreenPoints_;
  std::vector<SceneLabel> labels_;
};

}  // namespace velk
