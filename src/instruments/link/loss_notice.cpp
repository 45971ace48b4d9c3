#include "instruments/link/loss_notice.h"

#include "base/dates.h"
#include "instruments/texts.h"

namespace velk {

namespace {

std::string TimeAsOf(double now, double time, const std::string& picture) {
  return FormatDate(time, DatePart(time) == DatePart(now) ? picture : "dd-mmm-yyyy " + picture);
}

}  // namespace

void LossNotice::Begin(const OperatorText& what, double now) {
  *this = {};
  since_ = now;
  Lost(what);
}

bool LossNotice::Lost(const OperatorText& what) {
  if (gone_) return false;
  what_ = what;
  gone_ = true;
  ++losses_;
  return true;
}

bool LossNotice::Back(double now) {
  if (!gone_) return false;
  gone_ = false;
  backSince_ = now;
  return true;
}

OperatorText LossNotice::Text(double now) const {
  OperatorText text = what_;
  if (losses_ == 1 && gone_) return text;
  text += "\n";
  text += losses_ == 1 ? text::LostAt : std::to_string(losses_) + text::TimesSince;
  text += TimeAsOf(now, since_, "hh:mm");
  if (!gone_) text += text::BackSince + TimeAsOf(now, backSince_, "hh:mm:ss");
  return text + ".";
}

}  // namespace velk
