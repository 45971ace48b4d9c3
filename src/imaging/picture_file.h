#pragma once

#include <string>

#include "imaging/bitmap.h"

namespace velk {

// Writing an image to a file. What stood at the path stays until the new file is whole and on the disk. Each raises
// PermissionDenied, DiskFull or DeviceIOError with the path and the reason, and InvalidArgument for an image that was
// not created.

/// A baseline JPEG of YCbCr with 4:1:1 sampling; `quality` from 0 to 100.
void SaveJPG(const Bitmap& image, const std::string& path, int quality, int dotsPerInch);

/// A bitmap file of 24 bits a pixel, not compressed.
void SaveBMP(const Bitmap& image, const std::string& path, int dotsPerInch);

}  // namespace velk
