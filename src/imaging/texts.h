#pragma once

#include "base/message_text.h"

/// What pictures say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The path stands behind, and the reason
inline constexpr MessageText PictureNotSaved{2640, "The picture can't be saved to "};
inline constexpr MessageText JpegNotSaved{2641, "Failed to save to JPG "};

// The choice of a printer; its name stands in front
inline constexpr MessageText PrintToFile{2644, "Print to File (PDF)"};
inline constexpr MessageText HasBeenSelected{2645, " has been selected"};
inline constexpr MessageText FailedToBeSet{2646, " has failed to be set as the default printer."};
inline constexpr MessageText SelectAPrinter{2647, "Please select a printer from the list."};

// A file to save to; the path stands between the last two
inline constexpr MessageText SavePdfTitle{2671, "Print to File"};
inline constexpr MessageText PdfFilter{2672, "PDF Files (*.pdf)|*.pdf"};
inline constexpr MessageText FileIsThereBefore{2674, "The file ["};
inline constexpr MessageText FileIsThereAfter{2675, "] is there already. Replace it?"};

}  // namespace velk::text
