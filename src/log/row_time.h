#pragma once

#include "platform/database/command.h"
#include "platform/database/scan.h"

namespace velk {

/// The time of a row by its fields Date and Time, as some program stored them: numbers of days or texts. The day of the
/// one and the time of day of the other: either may hold both. NaN where they are none.
double RowTime(const FieldValue& date, const FieldValue& time);
double RowTime(double date, double time);
/// The same of the column `date` of a statement's present row and the one behind it.
double RowTime(const Command& row, int date);
double RowTime(const ScannedField& date, const ScannedField& time);

}  // namespace velk
