#pragma once

namespace velk {

/// What a click on the header band edits.
enum class HeaderZone { None, Minimum, Colour, Maximum };

/// A place on the header band of a chart.
struct HeaderPlace {
  int row = 0;  ///< curve row, from 1
  HeaderZone zone = HeaderZone::None;
};

/// The place at (x, y) of a header band of this width over so many curves, in twips. The left 35 % of each row stand
/// for the minimum, the right 35 % and all beyond them for the maximum, the middle for the colour. None left of the
/// axis and below the last row.
HeaderPlace HeaderPlaceAt(double x, double y, double width, int curves);

}  // namespace velk
