#pragma once

#include <QRect>
#include <vector>

namespace velk {

/// Places that cover `room` without a gap. Vertically the windows stand side by side in columns, horizontally one below
/// the other in rows. Columns and rows get no narrower than a chart can be read in: where there are more windows than
/// strips, the strips are shared, the first ones by one window more. No window gets smaller than `least`, as far as the
/// room is as wide as that: where it is too small for all of them, the places reach beyond its bottom.
std::vector<QRect> TilePlaces(QSize room, int windows, Qt::Orientation direction, QSize least = {});

/// Places one behind the other, each a title bar of height `step` further down and right, and large enough for a chart;
/// where the bottom is reached they begin at the top again.
std::vector<QRect> CascadePlaces(QSize room, int windows, int step);

/// Places for the icons of minimised windows of one size: along the bottom from the left, then in further rows above.
std::vector<QRect> IconPlaces(QSize room, int icons, QSize icon);

}  // namespace velk
