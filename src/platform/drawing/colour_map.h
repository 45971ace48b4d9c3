#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace velk {

/// How the colours of a picture on white paper are shown: by day as they are, but for pale inks, which get darker until
/// they can be read; by night on dark paper, with the same hues. The picture itself is not touched.
///
/// A pixel is one of the inks or, at the edge of a letter, an ink thinned by the paper: which of them explains it best
/// is looked up once and kept.
class ColourMap {
 public:
  ColourMap();

  void SetNight(bool night);
  bool IsNight() const { return night_; }
  /// A colour 0x00bbggrr that the picture is drawn with; black and the grid's grey are known. Gives whether it is new.
  bool AddInk(std::int32_t colour);
  /// Whether every picture is shown as it is.
  bool ChangesNothing() const { return !night_ && !hasPaleInk_; }
  /// What is shown for a colour 0x00bbggrr.
  std::int32_t Shown(std::int32_t colour) const;
  /// The paper as a pixel of 0xffrrggbb.
  std::uint32_t Paper() const { return paper_; }
  /// Maps so many pixels of 0xffrrggbb.
  void Map(const std::uint32_t* from, std::uint32_t* to, std::size_t count);

 private:
  struct Entry {
    std::uint32_t from, to;
  };
  static constexpr std::size_t kEntries = 1024;

  std::uint32_t LookUp(std::uint32_t pixel, std::size_t place);
  std::uint32_t Of(std::uint32_t pixel) const;
  void Forget();

  struct Ink {
    std::int32_t drawn, shown;
  };
  std::vector<Ink> inks_;
  bool night_ = false;
  bool hasPaleInk_ = false;
  std::uint32_t paper_ = 0;
  std::array<Entry, kEntries> entries_;  ///< by the pixel; what is looked up again is at hand
};

}  // namespace velk
