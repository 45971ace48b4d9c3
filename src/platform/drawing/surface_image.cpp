#include "platform/drawing/surface_image.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "base/colour.h"
#include "base/text_qt.h"
#include "platform/drawing/qt_drawing.h"
#include "platform/drawing/segment_clip.h"

namespace velk {

namespace {

/// The painter's own limit is 32767; no screen is higher than this.
constexpr int kMaxPixels = 16384;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;
constexpr int kBesidePlate = 8;  ///< dots left and right of a text's plate, to see whether its letters stay on it

int PixelCount(double logical, double scale) {
  const double pixels = std::round(logical * scale);
  return pixels >= 1 ? static_cast<int>(std::min<double>(pixels, kMaxPixels)) : 1;
}

QRgb ToPixel(std::int32_t colour) {
  return qRgb(Red(colour), Green(colour), Blue(colour));
}

/// Which pixels of `from` lie behind each of `to` pixels: the first, and the one behind the last.
std::vector<std::pair<int, int>> Behind(int from, int to) {
  std::vector<std::pair<int, int>> all;
  for (int i = 0; i < to; ++i) {
    const int first = static_cast<int>(std::int64_t{i} * from / to);
    all.emplace_back(first, std::max(first + 1, static_cast<int>(std::int64_t{i + 1} * from / to)));
  }
  return all;
}

/// The darker of two pixels.
std::uint32_t Darker(std::uint32_t a, std::uint32_t b) {
  return qGray(b) < qGray(a) ? b : a;
}

/// A picture of another size, the left part as wide as given.
QImage Rescaled(const QImage& picture, int left, QSize size, int newLeft) {
  left = std::min(left, picture.width()), newLeft = std::min(newLeft, size.width());
  auto columns = Behind(left, newLeft);
  for (const auto& [first, behind] : Behind(picture.width() - left, size.width() - newLeft))
    columns.emplace_back(std::min(left + first, picture.width() - 1), std::min(left + behind, picture.width()));
  const auto rows = Behind(picture.height(), size.height());
  QImage scaled(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    auto* to = reinterpret_cast<std::uint32_t*>(scaled.scanLine(y));
    for (int x = 0; x < size.width(); ++x) {
      std::uint32_t darkest = kWhite;
      const auto [left1, right] = columns[static_cast<std::size_t>(x)];
      const auto [top, bottom] = rows[static_cast<std::size_t>(y)];
      for (int row = top; row < bottom; ++row) {
        const auto* from = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(row));
        for (int column = left1; column < right; ++column) darkest = Darker(darkest, from[column]);
      }
      to[x] = darkest;
    }
  }
  return scaled;
}

QFont Scaled(QFont font, double ratio) {
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(QFontInfo(font).pixelSize() * ratio))));
  return font;
}

}  // namespace

SurfaceImage::SurfaceImage(double width, double height, double pixelRatio, const QFont& font)
    : font_(font), metrics_(font), baseFont_(font) {
  Resize(width, height, pixelRatio);
}

/// Gives whether the picture has another size, or other dots, from now on.
bool SurfaceImage::TakeSize(double width, double height, double pixelRatio, double stretch, QSize& size) {
  const bool sameRatio = pixelRatio == ratio_ && !image_.isNull();
  width_ = width;
  height_ = height;
  ratio_ = pixelRatio;
  scale_ = pixelRatio / kTwipsPerPixel;
  down_ = scale_ * stretch;
  size = QSize(PixelCount(width, scale_), PixelCount(height, down_));
  return !sameRatio || size != image_.size();
}

void SurfaceImage::Resize(double width, double height, double pixelRatio, double stretch) {
  const bool sameRatio = pixelRatio == ratio_ && !image_.isNull();
  QSize size;
  if (!TakeSize(width, height, pixelRatio, stretch, size)) return;
  EndPainting();
  Straighten();
  QImage larger(size, QImage::Format_RGB32);
  larger.fill(Qt::white);
  const bool staysBlank = !sameRatio || content_ == Content::Blank;
  if (!staysBlank) QPainter(&larger).drawImage(0, 0, image_);
  TakeImage(std::move(larger));
  if (staysBlank) content_ = Content::Blank;
}

void SurfaceImage::Rescale(double width, double height, double pixelRatio, double stretch, double fixedLeft) {
  // A window is made before it has its size: nothing stands on its pictures then that would have to be kept.
  if (content_ == Content::Blank) return Resize(width, height, pixelRatio, stretch);
  const double leftBefore = fixedLeft * scale_;
  QSize size;
  if (!TakeSize(width, height, pixelRatio, stretch, size)) return;
  EndPainting();
  Straighten();
  const bool again = content_ == Content::Rescaled;
  const QImage original = again ? original_ : image_.copy();
  if (!again) originalLeft_ = leftBefore;
  TakeImage(Rescaled(original, static_cast<int>(std::lround(originalLeft_)), size,
                     static_cast<int>(std::lround(fixedLeft * scale_))));
  original_ = original;
  content_ = Content::Rescaled;
}

void SurfaceImage::TakeImage(QImage image) {
  image_ = std::move(image);
  BeginAt(0);
  UseFont(baseFont_);
  SetPenWidth(penWidth_);
  MarkDirty(Bounds());
}

/// The picture's first row is this one of the image.
void SurfaceImage::BeginAt(int row) const {
  const auto stride = static_cast<std::size_t>(image_.bytesPerLine()) / sizeof(std::uint32_t);
  // The image is shared with nobody, so that there is nothing to detach from.
  auto* const memory = const_cast<std::uint32_t*>(reinterpret_cast<const std::uint32_t*>(image_.constBits()));
  const int behind = image_.height() - row;
  const int margin = penPixels_ + 1;
  const auto band = [&](int from, int count, int top) {
    const double across = image_.width() / 2.0, down = count / 2.0;
    return Band{{memory + static_cast<std::size_t>(from) * stride, stride, image_.width(), count},
                top,
                {across, top + down, across - margin, down - margin}};
  };
  bands_ = {band(row, behind, 0), band(0, row, behind)};
}

/// Moves the rows to where they lie one behind the other: a painter, and who looks at the picture whole, needs them so.
void SurfaceImage::Straighten() const {
  const auto& [first, second] = bands_;
  if (second.rows.height == 0) return;
  std::uint32_t* const begin = second.rows.pixels;
  std::rotate(begin, first.rows.pixels,
              first.rows.pixels + first.rows.stride * static_cast<std::size_t>(first.rows.height));
  BeginAt(0);
}

void SurfaceImage::SetFont(const TextFont& font) {
  UseFont(FontFor(font, PerInch(Unit::Pixel)));
}

void SurfaceImage::UseFont(const QFont& font) {
  EndPainting();
  baseFont_ = font;
  font_ = Scaled(font, ratio_);
  metrics_ = QFontMetricsF(font_, &image_);
  letterHeight_ = metrics_.height();
  ascent_ = metrics_.ascent();
  labels_.fill({});
}

QPainter& SurfaceImage::Painter() {
  Straighten();
  if (!painter_.isActive()) {
    painter_.begin(&image_);
    painter_.setFont(font_);
  }
  return painter_;
}

void SurfaceImage::EndPainting() {
  if (painter_.isActive()) painter_.end();
}

void SurfaceImage::SetPenWidth(double pixels) {
  if (pixels == penWidth_ && penRatio_ == ratio_) return;
  penWidth_ = pixels;
  penRatio_ = ratio_;
  penPixels_ = std::max(1, static_cast<int>(std::lround(penWidth_ * ratio_)));
  penBefore_ = penPixels_ / 2;
  penBehind_ = penPixels_ - penBefore_ - 1;
  BeginAt(bands_[1].rows.height);
}

void SurfaceImage::MarkDirty(const QRect& pixels) {
  if (!pixels.isEmpty()) MarkDirty(pixels.left(), pixels.top(), pixels.right(), pixels.bottom());
}

void SurfaceImage::NoteDrawing() {
  content_ = Content::Drawn;
  original_ = {};
}

void SurfaceImage::Cls() {
  EndPainting();
  image_.fill(Qt::white);
  BeginAt(0);
  MarkDirty(Bounds());
}

void SurfaceImage::Line(double x1, double y1, double x2, double y2, std::int32_t colour) {
  const ClippedSegment line{x1 * scale_, y1 * down_, x2 * scale_, y2 * down_};
  const Band& band = line.y1 < bands_[1].top ? bands_[0] : bands_[1];
  if (!band.room.Has(line.x1, line.y1) || !band.room.Has(line.x2, line.y2)) return CutLine(line, colour);
  // Above 0 a number cut off is the one below it; nearly all segments of a curve go this way.
  const int x1i = static_cast<int>(line.x1), y1i = static_cast<int>(line.y1);
  const int x2i = static_cast<int>(line.x2), y2i = static_cast<int>(line.y2);
  RasterInside(band.rows, x1i, y1i - band.top, x2i, y2i - band.top, penPixels_, ToPixel(colour));
  MarkLine(x1i, y1i, x2i, y2i);
}

/// A line that may leave the surface or cross from one band to the other, or has an end that is no number.
void SurfaceImage::CutLine(ClippedSegment line, std::int32_t colour) {
  const int margin = penPixels_ + 1;
  if (!ClipSegment(line, -margin, -margin, image_.width() + margin, image_.height() + margin)) return;
  const int x1 = static_cast<int>(std::floor(line.x1)), y1 = static_cast<int>(std::floor(line.y1));
  const int x2 = static_cast<int>(std::floor(line.x2)), y2 = static_cast<int>(std::floor(line.y2));
  for (const Band& band : bands_)
    if (band.rows.height > 0)
      RasterSegment(band.rows, x1, y1 - band.top, x2, y2 - band.top, penPixels_, ToPixel(colour));
  MarkLine(x1, y1, x2, y2);
}

void SurfaceImage::Circle(double x, double y, double radius, std::int32_t colour) {
  const int pen = penPixels_;
  const double outer = std::max(radius, 0.0) * scale_ + pen / 2.0;
  const double px = x * scale_, py = y * down_;
  // Written so that a coordinate that is no number leaves too.
  if (!(px >= -outer && py >= -outer && px <= image_.width() + outer && py <= image_.height() + outer)) return;
  QPainter& painter = Painter();
  painter.setPen(QPen(ToQColor(colour), pen));
  const QRectF box(px - radius * scale_, py - radius * scale_, 2 * radius * scale_, 2 * radius * scale_);
  if (radius * scale_ <= pen / 2.0)
    // No hole would be left: a dot of the pen's width and the circle's.
    painter.fillRect(QRectF(std::round(px - outer), std::round(py - outer), std::ceil(2 * outer), std::ceil(2 * outer)),
                     ToQColor(colour));
  else
    painter.drawEllipse(box);
  const int margin = pen + 1;
  MarkDirty(box.toAlignedRect().adjusted(-margin, -margin, margin, margin));
}

void SurfaceImage::Fill(double x, double y, double width, double height, std::int32_t colour) {
  const QRectF box(x * scale_, y * down_, width * scale_, height * down_);
  if (!IsDrawable(box)) return;
  const QRect pixels = box.toRect();
  Painter().fillRect(pixels, ToQColor(colour));
  MarkDirty(pixels);
}

void SurfaceImage::Picture(double x, double y, double width, double height, const PictureRows& picture) {
  const QRectF box(x * scale_, y * down_, width * scale_, height * down_);
  if (!IsDrawable(box)) return;
  const QRect pixels = box.toRect();
  Painter().drawImage(pixels, ImageOver(picture));
  MarkDirty(pixels);
}

void SurfaceImage::Print(double x, double y, std::string_view text, std::int32_t colour) {
  // Written so that a place that is no number leaves too; a QRect could not hold one far out.
  if (!(std::abs(x) * scale_ < 2 * kMaxPixels && std::abs(y) * down_ < 2 * kMaxPixels)) return;
  Label& label = LabelOf(text);
  const QRectF box(x * scale_, y * down_, label.advance, letterHeight_);
  const QRect plate = box.toAlignedRect().adjusted(-2, 0, 2, 0);
  if (!plate.intersects(Bounds())) return;
  const QPointF begin(box.left(), box.top() + ascent_);
  if (!textCovers_ || !CopyPlate(label, begin, colour, plate)) {
    QPainter& painter = Painter();
    painter.setPen(ToQColor(colour));
    if (textCovers_) painter.fillRect(plate, Qt::white);
    painter.drawText(begin, ToQt(text));
  }
  MarkDirty(plate);
}

/// A label of the axis comes again with the next block, and to shape and paint it takes as long as hundreds of
/// segments: it is painted beside the surface, and anew only where it begins elsewhere on its plate. A painter puts
/// letters on whole dots down the page and on 64ths of one across. Gives whether no letter reaches out of
/// the plate beside it.
bool SurfaceImage::CopyPlate(Label& label, const QPointF& begin, std::int32_t colour, const QRect& plate) {
  const QPoint place(static_cast<int>(begin.x() * 64) - plate.left() * 64,
                     static_cast<int>(std::floor(begin.y() + 0.5)) - plate.top());
  if (label.size != plate.size() || label.begin != place || label.colour != colour) {
    label.size = plate.size();
    label.begin = place;
    label.colour = colour;
    label.plate = PlateOf(label, plate.size());
  }
  if (label.plate.isNull()) return false;
  const QRect shown = plate & Bounds();
  for (int y = shown.top(); y <= shown.bottom(); ++y)
    std::copy_n(reinterpret_cast<const std::uint32_t*>(label.plate.constScanLine(y - plate.top())) + kBesidePlate +
                    shown.left() - plate.left(),
                shown.width(), RowOf(y) + shown.left());
  return true;
}

QImage SurfaceImage::PlateOf(const Label& label, QSize size) const {
  QImage plate(size.width() + 2 * kBesidePlate, size.height(), QImage::Format_RGB32);
  plate.fill(Qt::white);
  QPainter painter(&plate);
  painter.setFont(font_);
  painter.setPen(ToQColor(label.colour));
  painter.drawText(QPointF(kBesidePlate + label.begin.x() / 64.0, label.begin.y()), ToQt(label.text));
  painter.end();
  for (int y = 0; y < plate.height(); ++y) {
    const auto* const row = reinterpret_cast<const std::uint32_t*>(plate.constScanLine(y));
    const auto isBlank = [row](int from) {
      return std::all_of(row + from, row + from + kBesidePlate, [](std::uint32_t pixel) { return pixel == kWhite; });
    };
    if (!isBlank(0) || !isBlank(kBesidePlate + size.width())) return {};
  }
  return plate;
}

/// Whoever prints a text has measured it to find its place: to shape it anew would take as long as to draw it.
SurfaceImage::Label& SurfaceImage::LabelOf(std::string_view text) const {
  for (Label& known : labels_)
    if (!text.empty() && known.text == text) return known;
  Label& oldest = labels_[nextLabel_++ % labels_.size()];
  oldest = {std::string(text), metrics_.horizontalAdvance(ToQt(text)), {}, {}, 0, {}};
  return oldest;
}

double SurfaceImage::TextWidth(std::string_view text) const {
  return LabelOf(text).advance / scale_;
}

double SurfaceImage::TextHeight(std::string_view) const {
  return letterHeight_ / down_;
}

void SurfaceImage::ScrollUp(int pixels) {
  const int height = image_.height();
  const int gone = std::clamp(pixels, 0, height);
  const int top = bands_[1].rows.height;
  BeginAt((top + gone) % height);
  for (const auto& [rows, bandTop, room] : bands_) {
    const auto kept = static_cast<std::size_t>(std::clamp(height - gone - bandTop, 0, rows.height));
    const std::size_t all = static_cast<std::size_t>(rows.height) * rows.stride;
    std::fill_n(rows.pixels + kept * rows.stride, all - kept * rows.stride, kWhite);
  }
  MarkDirty(Bounds());
}

void SurfaceImage::CopyFrom(const RetainedSurface& other) {
  const auto& from = dynamic_cast<const SurfaceImage&>(other);
  Resize(from.width_, from.height_, from.ratio_, from.down_ / from.scale_);
  UseFont(from.baseFont_);
  textCovers_ = from.textCovers_;
  std::memcpy(image_.bits(), from.image_.constBits(), static_cast<std::size_t>(from.image_.sizeInBytes()));
  BeginAt(from.bands_[1].rows.height);
  MarkDirty(Bounds());
}

QImage SurfaceImage::View() const {
  Straighten();
  // Made over the same bytes: setting the ratio on a copy would copy all pixels.
  QImage view(const_cast<uchar*>(image_.constBits()), image_.width(), image_.height(), image_.bytesPerLine(),
              image_.format());
  view.setDevicePixelRatio(ratio_);
  return view;
}

QRect SurfaceImage::TakeDirty() {
  const QRect dirty =
      QRect(QPoint(std::max(dirty_.left, 0), std::max(dirty_.top, 0)),
            QPoint(std::min(dirty_.right, image_.width() - 1), std::min(dirty_.bottom, image_.height() - 1)));
  dirty_ = {};
  if (dirty.isEmpty()) return {};
  const QRectF scaled(dirty.x() / ratio_, dirty.y() / ratio_, dirty.width() / ratio_, dirty.height() / ratio_);
  return scaled.toAlignedRect();
}

}  // namespace velk
