#pragma once

#include "base/operator_text.h"

namespace velk {

/// What the one box of a lost link tells, however often the link is lost and comes back while it stands.
class LossNotice {
 public:
  /// The first loss of a new box.
  void Begin(const OperatorText& what, double now);
  /// Lost, or still gone. False where that is nothing new.
  bool Lost(const OperatorText& what);
  /// Data have come. False where that is nothing new.
  bool Back(double now);

  /// What was lost, and once there is more to tell than that: how often, since when, and since when it is back. A time
  /// of another day than `now` has its date.
  OperatorText Text(double now) const;

 private:
  OperatorText what_;
  int losses_ = 0;
  double since_ = 0;  ///< of the first loss
  bool gone_ = false;
  double backSince_ = 0;
};

}  // namespace velk
