// Any text as a date-time: a value or a type mismatch, and a value shown to the second reads back as the same second.

#include <cstdint>
#include <cstdlib>

#include "base/dates.h"
#include "base/errors.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckRoundTrip(double value) {
  Require(IsDateTime(value));
  const double again = CDate(FormatDate(value, "dd-mmm-yyyy hh:mm:ss"));
  Require(SecondsBetween(value, again) == 0);
  Require(DatePart(again) == DatePart(value));
  Require(CDate(FormatDate(value, "DD/MM/YYYY hh:nn:ss")) == again);
  Require(CDate(FormatDate(value, "yyyy-mm-dd hh:mm:ss")) == again);
  Require(JoinDateTime(DatePart(again), TimePart(again)) == again);
  Require(CutToMinute(value) == CDate(FormatDate(value, "dd-mmm-yyyy hh:mm") + ":00"));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  double value = 0;
  try {
    value = CDate(text);
  } catch (const RuntimeError& error) {
    Require(error.Number() == ErrorNumber::TypeMismatch);
    return 0;
  }
  CheckRoundTrip(value);
  return 0;
}
