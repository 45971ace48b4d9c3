#pragma once

#include <QImage>
#include <optional>
#include <string>

class QIODevice;

namespace velk {

/// A picture file, scaled down to `bound` in pixels where it is larger. Nothing where the file is missing, is no
/// picture, or holds more than 64 megapixels.
std::optional<QImage> ReadPicture(const std::string& path, QSize bound);

/// The same of bytes from elsewhere.
std::optional<QImage> ReadPicture(QIODevice& from, QSize bound);

}  // namespace velk
