#pragma once

#include <string_view>

namespace velk {

// English in every language of the program: files and databases carry these names.

inline constexpr std::string_view kMonthNames[12] = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};

inline constexpr std::string_view kDayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};

}  // namespace velk
