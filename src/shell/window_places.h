#pragma once

#include <QRect>
#include <vector>

namespace velk {

/// Places that cover `room` without a gap. Vertically the windows stand side by side in columns, horizontally one below
/// the other in rows. Columns and rows get no narrower than a chart can be read in: where there are more windows than
/// strips, the strips are shared, the first ones by one window more.
std::vector<QRect> TilePlaces(QSize room, int windows, Qt::Orientation direction);

/// Places for the icons of minimised windows of one size: along the bottom from the left, then in further rows above.
std::vector<QRect> IconPlaces(QSize room, int icons, QSize icon);

}  // namespace velk
