#pragma once

#include "base/message_text.h"

/// What the well tools say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// Survey files
inline constexpr MessageText SurveyFileEmpty{2910,
                                             "The file holds no survey. Its first line has to be the number of rows."};
inline constexpr MessageText SurveyFileShort{2911, "The file ends ahead of its last row."};
inline constexpr MessageText SurveyRowsAnnounced{2912, "Rows announced: "};
inline constexpr MessageText SurveyRowsRead{2913, ", read and kept: "};
inline constexpr MessageText SurveyUnitUnknown{
    2914,
    "The number behind the last row is none of the units 0, 1 and 2. The present unit stays. Is the number of rows "
    "right?"};
inline constexpr MessageText WellSectionsLeftOut{
    2915, "The well has more than 20 sections. Those below the 20th are left out."};

}  // namespace velk::text
