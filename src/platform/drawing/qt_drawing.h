#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRectF>

#include "base/colour.h"
#include "platform/drawing/surface.h"

namespace velk {

// What surfaces hand to the toolkit.

/// A colour 0x00bbggrr.
QColor ToQColor(std::int32_t colour);

/// A font whose size counts on a device of so many dots an inch; a dot high at least.
QFont FontFor(const TextFont& font, double dotsPerInch);

/// A picture over the caller's pixels, good while those are.
QImage ImageOver(const PictureRows& picture);

/// Whether every number is one, and near enough to a device of any size that the toolkit can count it.
bool IsDrawable(const QRectF& box);

}  // namespace velk
