#pragma once

#include "imaging/bitmap.h"

namespace velk {

/// Puts a copy of an image on the clipboard, as a bitmap. False for one that was not created.
bool CopyToClipboard(const Bitmap& image);

}  // namespace velk
