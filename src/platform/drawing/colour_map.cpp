#include "platform/drawing/colour_map.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "base/colour.h"

namespace velk {

namespace {

constexpr double kSeen = 3;        ///< contrast of a curve
constexpr double kReadable = 4.5;  ///< and of letters
constexpr std::size_t kMostInks = 256;

/// The colours that are offered where nobody has chosen, each with the one that has its part by night.
constexpr std::int32_t kByDayAndNight[][2] = {
    {Rgb(0xC8, 0x10, 0x2E), Rgb(0xFF, 0x6B, 0x6B)},
    {Rgb(0x00, 0x57, 0xB8), Rgb(0x5A, 0xA9, 0xFF)},
    {Rgb(0x1B, 0x7F, 0x3B), Rgb(0x4C, 0xC3, 0x6E)},
    {Rgb(0x7B, 0x2D, 0x8E), Rgb(0xC8, 0x8B, 0xDB)},
    {Rgb(0xB8, 0x54, 0x00), Rgb(0xFF, 0x9F, 0x45)},
    {Rgb(0x00, 0x79, 0x7A), Rgb(0x3C, 0xC8, 0xC4)},
    {Rgb(0x7A, 0x4A, 0x1E), Rgb(0xC9, 0x9A, 0x6B)},
    {Rgb(0xB0, 0x15, 0x7A), Rgb(0xFF, 0x7B, 0xC4)},
    {Rgb(0x1F, 0x3A, 0x93), Rgb(0x8F, 0xA8, 0xFF)},
    {Rgb(0x6B, 0x6B, 0x00), Rgb(0xC9, 0xC9, 0x4A)},
    {Rgb(0x8B, 0x0A, 0x1A), Rgb(0xFF, 0x8A, 0x8A)},
    {Rgb(0x0A, 0x7C, 0xA8), Rgb(0x6C, 0xCB, 0xF0)},
    {Rgb(0x14, 0x5A, 0x32), Rgb(0x7F, 0xD8, 0xA0)},
    {Rgb(0x5B, 0x3F, 0xBF), Rgb(0xA9, 0x9B, 0xFF)},
    {Rgb(0x96, 0x36, 0x1A), Rgb(0xF0, 0x8A, 0x66)},
    {Rgb(0x33, 0x3A, 0x42), Rgb(0xD5, 0xDB, 0xE1)},
    {colour::Muted, colour::NightMuted},
    {colour::Black, colour::NightRules},
    {colour::Grid, colour::NightGrid},
    {colour::White, colour::NightPaper},
};

std::uint32_t PixelOf(std::int32_t colour) {
  return 0xFF000000U | static_cast<std::uint32_t>(Red(colour)) << 16 | static_cast<std::uint32_t>(Green(colour)) << 8 |
         static_cast<std::uint32_t>(Blue(colour));
}

std::int32_t ColourOf(std::uint32_t pixel) {
  return Rgb(static_cast<int>(pixel >> 16 & 0xFF), static_cast<int>(pixel >> 8 & 0xFF), static_cast<int>(pixel & 0xFF));
}

/// How far a colour is from white.
struct Distance {
  explicit Distance(std::int32_t colour)
      : red(255 - Red(colour)), green(255 - Green(colour)), blue(255 - Blue(colour)) {}
  double Times(const Distance& other) const { return red * other.red + green * other.green + blue * other.blue; }

  double red, green, blue;
};

/// How much of an ink, 0 to 1, makes a colour on white paper, and how far from the colour that still is.
struct Share {
  double part, error;
};

Share ShareOf(const Distance& colour, const Distance& ink) {
  const double whole = ink.Times(ink);
  const double part = whole > 0 ? std::clamp(colour.Times(ink) / whole, 0.0, 1.0) : 0;
  const auto square = [](double x) { return x * x; };
  return {part, square(colour.red - part * ink.red) + square(colour.green - part * ink.green) +
                    square(colour.blue - part * ink.blue)};
}

std::int32_t Mixed(std::int32_t paper, std::int32_t ink, double part) {
  const auto channel = [part](int from, int to) { return static_cast<int>(std::lround(from + part * (to - from))); };
  return Rgb(channel(Red(paper), Red(ink)), channel(Green(paper), Green(ink)), channel(Blue(paper), Blue(ink)));
}

}  // namespace

ColourMap::ColourMap() : inks_{{colour::Black, colour::Black}, {colour::Grid, colour::Grid}} {
  Forget();
}

void ColourMap::SetNight(bool night) {
  if (night_ == night) return;
  night_ = night;
  Forget();
}

bool ColourMap::AddInk(std::int32_t colour) {
  colour &= 0xFFFFFF;
  const auto isThis = [colour](const Ink& ink) { return ink.drawn == colour; };
  if (colour == colour::White || std::any_of(inks_.begin(), inks_.end(), isThis)) return false;
  // The first two are always there; of the others the oldest has had its time.
  if (inks_.size() >= kMostInks) inks_.erase(inks_.begin() + 2);
  inks_.push_back({colour, colour});
  if (Contrast(colour, colour::White) < kSeen) hasPaleInk_ = true;
  Forget();
  return true;
}

std::int32_t ColourMap::Shown(std::int32_t colour) const {
  if (!night_)
    return colour == colour::Grid || colour == colour::White ? colour : ReadableOn(colour, colour::White, kSeen);
  for (const auto& [day, night] : kByDayAndNight)
    if (day == colour) return night;
  return ReadableOn(colour, colour::NightPaper, kReadable);
}

void ColourMap::Forget() {
  const std::int32_t paper = night_ ? colour::NightPaper : colour::White;
  paper_ = PixelOf(paper);
  for (Ink& ink : inks_) ink.shown = Shown(ink.drawn);
  entries_.fill({PixelOf(colour::White), paper_});
}

std::uint32_t ColourMap::Of(std::uint32_t pixel) const {
  const std::int32_t colour = ColourOf(pixel);
  for (const Ink& ink : inks_)
    if (ink.drawn == colour) return PixelOf(ink.shown);
  const Distance distance(colour);
  std::int32_t best = colour::Black;
  Share least{0, INFINITY};
  for (const Ink& ink : inks_) {
    const Share share = ShareOf(distance, Distance(ink.drawn));
    if (share.error < least.error) best = ink.shown, least = share;
  }
  return PixelOf(Mixed(ColourOf(paper_), best, least.part));
}

/// Two places are asked, and the older pixel makes room: two inks that take turns along a row must not push each other
/// out, since to look one up takes as long as many pixels.
std::uint32_t ColourMap::LookUp(std::uint32_t pixel, std::size_t place) {
  Entry& entry = entries_[place];
  Entry& beside = entries_[place ^ 1];
  if (beside.from == pixel) return beside.to;
  beside = entry;
  entry = {pixel, Of(pixel)};
  return entry.to;
}

void ColourMap::Map(const std::uint32_t* from, std::uint32_t* to, std::size_t count) {
  // Most of a picture is paper: eight pixels at a time. White has all bits.
  constexpr std::size_t kAtOnce = 8;
  const auto map = [this](std::uint32_t pixel) {
    const std::size_t place = pixel * 2654435761U >> 22;
    return entries_[place].from == pixel ? entries_[place].to : LookUp(pixel, place);
  };
  const auto pair = [from](std::size_t at) {
    std::uint64_t two;
    std::memcpy(&two, from + at, sizeof two);
    return two;
  };
  std::size_t i = 0;
  for (; i + kAtOnce <= count; i += kAtOnce) {
    if ((pair(i) & pair(i + 2) & pair(i + 4) & pair(i + 6)) == ~std::uint64_t{0})
      std::fill_n(to + i, kAtOnce, paper_);
    else
      std::transform(from + i, from + i + kAtOnce, to + i, map);
  }
  std::transform(from + i, from + count, to + i, map);
}

}  // namespace velk
