#pragma once

#include <string>
#include <string_view>

namespace velk {

/// How times stand in the entries of the viewer.
inline constexpr const char* kMomentPicture = "dd-mmm-yyyy hh:mm:ss";

/// A range of time as it is entered, between the first and the last record of a log.
struct RangeEntry {
  double begin = 0, end = 0;
  bool beginIsSound = true, endIsSound = true;  ///< false: what was entered is no date, and the bound stands for it
};

/// What two texts mean: a bound beyond a record's is set to that, and so are both where the begin lies behind the end.
/// A text that is as a bound is shown means that bound itself, with its fraction of a second.
RangeEntry ReadRange(std::string_view begin, std::string_view end, double first, double last);

/// The factor of a filter, its fraction behind a point or a comma; 0 for what is no number.
double ReadFactor(std::string_view text);

/// A time to go to: a date in the 11 characters at the left of a text, a time in the 8 at its right. NaN for anything
/// else.
double ReadTarget(std::string_view text);

}  // namespace velk
