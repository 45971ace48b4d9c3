#include "wells/well_scene.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/numbers.h"
#include "wells/texts.h"

namespace velk {

namespace {

/// World units are thousands of depth units.
constexpr double kThousand = 1000;
constexpr int kSurfacePoints = kFramePoints / kWellSurfaces;
constexpr int kCorners = 4;
/// The viewing window is 30 to either side at a distance of 60.
constexpr double kWindowScale = 60.0 / 30;
constexpr double kDefaultRadius = 3.5;
constexpr double kCasingUnit = 0.015;

Point4 PointOf(const PathStation& station) {
  return {station.east / kThousand, station.north / kThousand, -station.tvd / kThousand};
}

/// How much shorter than a tenth of the frame's depth a mark is, by how much of that depth the well takes.
double TickShare(double depth, double frameDepth) {
  constexpr double kBands[] = {0, 0.2, 0.4, 0.6, 0.8};
  for (std::size_t i = 1; i < std::size(kBands); ++i)
    if (depth > kBands[i - 1] * frameDepth && depth < kBands[i] * frameDepth) return kBands[i];
  return 1;
}

/// Half the size of the hole where a station lies.
double RadiusAt(double depth, std::span<const WellSection> sections) {
  for (const WellSection& section : sections)
    if (depth <= section.end) return section.firstSize / 2;
  return sections.empty() ? kDefaultRadius : sections.back().firstSize / 2;
}

/// Draws in the units of a scene, cut to its square.
class ScenePen {
 public:
  /// `drawn` gets what is drawn.
  ScenePen(Surface& surface, const ScenePlace& place, std::vector<ClippedSegment>* drawn = nullptr)
      : surface_(surface), place_(place), scale_(place.side / kHalfWidth), drawn_(drawn) {}

  double X(const ScreenPoint& point) const { return place_.left + point.x * scale_; }
  double Y(const ScreenPoint& point) const { return place_.top + point.y * scale_; }
  /// Whether two points lie on the same dot, or on neighbours.
  bool IsOneDot(const ScreenPoint& a, const ScreenPoint& b) const {
    return std::fabs(a.x - b.x) * scale_ < place_.dot && std::fabs(a.y - b.y) * scale_ < place_.dot;
  }
  void Line(const ScreenPoint& a, const ScreenPoint& b, std::int32_t colour) {
    ClippedSegment line{X(a), Y(a), X(b), Y(b)};
    if (!ClipSegment(line, place_.left, place_.top, place_.left + place_.side, place_.top + place_.side)) return;
    surface_.Line(line.x1, line.y1, line.x2, line.y2, colour);
    if (drawn_) drawn_->push_back(line);
  }

 private:
  Surface& surface_;
  const ScenePlace& place_;
  const double scale_;
  std::vector<ClippedSegment>* const drawn_;
};

struct LabelBox {
  double left, top, right, bottom;
  static LabelBox Around(double x, double y, double width, double height) {
    return {x - width / 2, y - height / 2, x + width / 2, y + height / 2};
  }
  LabelBox Within(const ScenePlace& place) const {
    const double across = std::clamp(left, place.left, std::max(place.left, place.left + place.side - (right - left)));
    const double down = std::clamp(top, place.top, std::max(place.top, place.top + place.side - (bottom - top)));
    return {across, down, across + right - left, down + bottom - top};
  }
  bool IsIn(const ScenePlace& place) const {
    return left >= place.left && top >= place.top && right <= place.left + place.side &&
           bottom <= place.top + place.side;
  }
  bool Meets(const LabelBox& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
  }
  /// Whether a segment comes nearer than `gap`.
  bool IsCrossed(ClippedSegment line, double gap) const {
    const bool isApart = std::max(line.x1, line.x2) < left - gap || std::min(line.x1, line.x2) > right + gap ||
                         std::max(line.y1, line.y2) < top - gap || std::min(line.y1, line.y2) > bottom + gap;
    return !isApart && ClipSegment(line, left - gap, top - gap, right + gap, bottom + gap);
  }
};

}  // namespace

Matrix4 ViewMatrix(const WellView& view) {
  const double b = WellRadians(view.tilt) - kWellPi / 2;
  const double a = -WellRadians(view.azimuth);
  const double distance = view.distance / kThousand;
  return Matrix4::Translate(-view.focalEast / kThousand, view.focalNorth / kThousand, view.focalDepth / kThousand) *
         Matrix4::Translate(distance * std::cos(b) * std::sin(a), distance * std::cos(b) * std::cos(a),
                            -distance * std::sin(b)) *
         Matrix4::SwapAxes() * Matrix4::RotateY(a + kWellPi) * Matrix4::RotateX(b) * Matrix4::MirrorZ() *
         Matrix4::ScaleXY(kWindowScale, kWindowScale);
}

ScreenPoint OnScreen(const Point4& view) {
  if (view.z == 0) return {};
  return {kHalfWidth * view.x / -view.z + kHalfWidth / 2, kHalfWidth * view.y / -view.z + kHalfWidth / 2};
}

FrameSize FrameOf(std::span<const PathStation> stations) {
  double across = 0, deepest = 0;
  for (const PathStation& station : stations) {
    across = std::max({across, std::fabs(station.east), std::fabs(station.north)});
    deepest = std::max(deepest, std::fabs(station.tvd));
  }
  const double depth = std::floor(deepest / kThousand) + 1;
  // The next power of ten above it.
  const double frameDepth = std::pow(10, std::floor(std::log10(depth)) + 1);
  return {std::floor(across / kThousand) + 1, frameDepth, frameDepth / 10 * TickShare(depth, frameDepth)};
}

// --- Points ---

void WellScene::Build(std::span<const PathStation> stations, std::span<const WellSection> sections,
                      const WellView& view) {
  view_ = view;
  frame_ = FrameOf(stations);
  scenePoints_.clear();
  labels_.clear();
  AddHorizontal();
  AddVertical(WellSurface::DepthNorth);
  AddVertical(WellSurface::DepthEast);
  scenePoints_.reserve(kFramePoints + stations.size());
  for (const PathStation& station : stations) scenePoints_.push_back(PointOf(station));
  tubePoints_.clear();
  if (view.casing) BuildTube(stations, sections);
  Project();
}

/// A line of the grid from its far edge across the near one, where it ends in a mark and a label.
void WellScene::AddLine(WellSurface surface, const Point4& far, const Point4& tip, const MessageText& prefix,
                        double value) {
  scenePoints_.push_back(far);
  labels_.push_back({static_cast<int>(scenePoints_.size()), surface, prefix, value * kThousand});
  scenePoints_.push_back(tip);
}

/// Three lines in each direction, and one that points to the north.
void WellScene::AddHorizontal() {
  constexpr WellSurface kSurface = WellSurface::NorthEast;
  const double width = frame_.width, z = -view_.shift[0] / kThousand, end = width + frame_.tick;
  for (const auto& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
    scenePoints_.push_back({x * width, y * width, z});
  for (const int side : {-1, 0, 1}) {
    AddLine(kSurface, {side * width, width, z}, {side * width, -end, z}, side < 0 ? text::MarkWest : text::MarkEast,
            std::abs(side) * width);
    AddLine(kSurface, {-width, side * width, z}, {end, side * width, z}, side < 0 ? text::MarkSouth : text::MarkNorth,
            std::abs(side) * width);
  }
  scenePoints_.push_back({0, width, z});
  scenePoints_.push_back({0, end, z});
}

/// Five depths, and the two ends of the other axis.
void WellScene::AddVertical(WellSurface surface) {
  const bool isNorth = surface == WellSurface::DepthNorth;
  const double width = frame_.width, depth = frame_.depth;
  const double shift = view_.shift[static_cast<std::size_t>(surface)] / kThousand;
  const auto at = [&](double along, double z) { return isNorth ? Point4{shift, along, z} : Point4{along, shift, z}; };
  for (const auto& [along, down] : {std::pair{-1, 0}, {1, 0}, {1, -1}, {-1, -1}})
    scenePoints_.push_back(at(along * width, down * depth));
  for (int quarter = 0; quarter <= 4; ++quarter) {
    const double z = -depth * quarter / 4;
    AddLine(surface, at(-width, z), at(width + frame_.tick, z), text::MarkDepth, -z);
  }
  AddLine(surface, at(-width, 0), at(-width, -depth - frame_.tick), isNorth ? text::MarkSouth : text::MarkWest, width);
  AddLine(surface, at(width, 0), at(width, -depth - frame_.tick), isNorth ? text::MarkNorth : text::MarkEast, width);
}

void WellScene::BuildTube(std::span<const PathStation> stations, std::span<const WellSection> sections) {
  const double scale = (view_.casingSize + 1) * kCasingUnit;
  tubePoints_.reserve(stations.size() * kTubeSides);
  for (const PathStation& station : stations) {
    const Point4 centre = PointOf(station);
    const double radius = RadiusAt(station.depth, sections) * scale;
    const double sineA = std::sin(station.azimuth), cosineA = std::cos(station.azimuth);
    const double sineI = std::sin(station.inclination), cosineI = std::cos(station.inclination);
    for (int k = 0; k < kTubeSides; ++k) {
      const double angle = k * kWellTwoPi / kTubeSides;
      const double side = radius * std::cos(angle), high = radius * std::sin(angle);
      // One axis of the circle is level, the other one lies in the plane of the vertical and the hole.
      tubePoints_.push_back({centre.x + side * cosineA + high * cosineI * sineA,
                             centre.y - side * sineA + high * cosineI * cosineA, centre.z + high * sineI});
    }
  }
}

void WellScene::Project() {
  const Matrix4 matrix = ViewMatrix(view_);
  const auto project = [&](const std::vector<Point4>& from, std::vector<Point4>& views,
                           std::vector<ScreenPoint>& screen) {
    views.clear();
    screen.clear();
    views.reserve(from.size());
    screen.reserve(from.size());
    for (const Point4& point : from) {
      views.push_back(matrix(point));
      screen.push_back(OnScreen(views.back()));
    }
  };
  project(scenePoints_, viewPoints_, screenPoints_);
  project(tubePoints_, tubeViewPoints_, tubeScreenPoints_);
}

// --- Drawing ---

void WellScene::Draw(Surface& surface, const ScenePlace& place, const SceneColours& colours,
                     const Language& language) const {
  surface.SetPenWidth(1);
  DrawFrame(surface, place, colours);
  Segments well;
  DrawTube(surface, place, colours.path, well);
  DrawPath(surface, place, colours.path, well);
  DrawLabels(surface, place, colours, language, well);
}

bool WellScene::IsInFront(std::size_t point) const {
  return viewPoints_[point].z > 0;
}

void WellScene::DrawFrame(Surface& surface, const ScenePlace& place, const SceneColours& colours) const {
  ScenePen pen(surface, place);
  for (std::size_t i = 0; i < kWellSurfaces; ++i) {
    if (view_.hidden[i]) continue;
    const std::size_t first = i * kSurfacePoints;
    const auto line = [&](std::size_t a, std::size_t b) {
      if (IsInFront(first + a) && IsInFront(first + b))
        pen.Line(screenPoints_[first + a], screenPoints_[first + b], colours.surfaces[i]);
    };
    for (std::size_t corner = 0; corner < kCorners; ++corner) line(corner, (corner + 1) % kCorners);
    for (std::size_t point = kCorners; point < kSurfacePoints; point += 2) line(point, point + 1);
  }
}

void WellScene::DrawPath(Surface& surface, const ScenePlace& place, std::int32_t colour, Segments& drawn) const {
  ScenePen pen(surface, place, &drawn);
  std::size_t from = kFramePoints;
  for (std::size_t to = from + 1; to < scenePoints_.size(); ++to) {
    const bool isLast = to + 1 == scenePoints_.size();
    if (!isLast && IsInFront(from) && pen.IsOneDot(screenPoints_[from], screenPoints_[to])) continue;
    if (IsInFront(from) && IsInFront(to)) pen.Line(screenPoints_[from], screenPoints_[to], colour);
    from = to;
  }
}

/// A ring around each station that lies on other dots than the last one drawn, and lines from ring to ring.
void WellScene::DrawTube(Surface& surface, const ScenePlace& place, std::int32_t colour, Segments& drawn) const {
  ScenePen pen(surface, place, &drawn);
  const std::size_t rings = tubePoints_.size() / kTubeSides;
  const auto isInFront = [&](std::size_t ring) {
    const auto first = tubeViewPoints_.begin() + static_cast<std::ptrdiff_t>(ring * kTubeSides);
    return std::all_of(first, first + kTubeSides, [](const Point4& point) { return point.z > 0; });
  };
  const auto isOneDot = [&](std::size_t a, std::size_t b) {
    for (std::size_t k = 0; k < kTubeSides; ++k)
      if (!pen.IsOneDot(tubeScreenPoints_[a * kTubeSides + k], tubeScreenPoints_[b * kTubeSides + k])) return false;
    return true;
  };
  std::size_t last = rings;
  for (std::size_t ring = 0; ring < rings; ++ring) {
    if (last < rings && ring + 1 < rings && isOneDot(last, ring)) continue;
    if (!isInFront(ring)) {
      last = rings;
      continue;
    }
    for (std::size_t k = 0; k < kTubeSides; ++k) {
      const ScreenPoint& point = tubeScreenPoints_[ring * kTubeSides + k];
      pen.Line(point, tubeScreenPoints_[ring * kTubeSides + (k + 1) % kTubeSides], colour);
      if (last < rings) pen.Line(tubeScreenPoints_[last * kTubeSides + k], point, colour);
    }
    last = ring;
  }
}

/// Each in front of its mark, where the mark ends within the picture, on ground that no line crosses; one that would
/// stand on another, on the path or on its tube is left out.
void WellScene::DrawLabels(Surface& surface, const ScenePlace& place, const SceneColours& colours,
                           const Language& language, const Segments& well) const {
  constexpr double kGap = 0.25;  // of its height
  ScenePen pen(surface, place);
  std::vector<LabelBox> drawn;
  for (const SceneLabel& label : labels_) {
    const auto at = static_cast<std::size_t>(label.surface), tip = static_cast<std::size_t>(label.point);
    if (view_.hidden[at] || !IsInFront(tip) || !IsInFront(tip - 1)) continue;
    const double x = pen.X(screenPoints_[tip]), y = pen.Y(screenPoints_[tip]);
    if (!LabelBox{x, y, x, y}.IsIn(place)) continue;
    const std::string text = language.In(label.prefix) + Format(label.value, "#####0");
    const double width = surface.TextWidth(text), height = surface.TextHeight(text), gap = kGap * height;
    // The mark points there.
    const double across = x - pen.X(screenPoints_[tip - 1]), down = y - pen.Y(screenPoints_[tip - 1]);
    const double length = std::hypot(across, down);
    double share = 0;
    if (length > 0) share = std::min((width / 2 + gap) / std::fabs(across), (height / 2 + gap) / std::fabs(down));
    const LabelBox box = LabelBox::Around(x + share * across, y + share * down, width, height).Within(place);
    const auto meets = [&](const LabelBox& other) { return box.Meets(other); };
    if (std::any_of(drawn.begin(), drawn.end(), meets)) continue;
    const auto covers = [&](const ClippedSegment& line) { return box.IsCrossed(line, gap); };
    if (std::any_of(well.begin(), well.end(), covers)) continue;
    surface.Fill(box.left, box.top, width, height, colours.ground);
    surface.Print(box.left, box.top, text, colours.surfaces[at]);
    drawn.push_back(box);
  }
}

}  // namespace velk
