#pragma once

#include "base/message_text.h"

/// What pictures say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The path stands behind, and the reason
inline constexpr MessageText PictureNotSaved{2640, "The picture can't be saved to "};
inline constexpr MessageText JpegNotSaved{2641, "Failed to save to JPG "};

}  // namespace velk::text
