#pragma once

#include "graphs/coordinates.h"

namespace velk {

/// One drawing of a curve's segment, from value `previous` to `value`.
struct WrappingPass {
  double previous = 0;
  double value = 0;
  int penWidth = 2;
};

/// The drawings of one segment. First as it is, with pen 2. Then, where `wrapping` is on, moved down by one scale range
/// at a time while an end lies above the scale, and after that up while an end lies below it, with pen 3: so an edge
/// that is crossed shows thick in each band that the segment reaches.
///
/// Values and limits have 32 bits, and all that is worked out from them 64: a value on a limit stays on it.
///
/// The passes end after 1,000 moves, and where a move would no longer change the 32-bit value that lies outside: a
/// reading a million ranges away must not hold up the sample. A scale that is inverted or no number has no moves.
class WrappingPasses {
 public:
  WrappingPasses(float previous, float value, Scale scale, bool wrapping)
      : previous_(static_cast<double>(previous)),
        value_(static_cast<double>(value)),
        min_(static_cast<double>(scale.min)),
        max_(static_cast<double>(scale.max)),
        range_(max_ - min_),
        wraps_(wrapping && range_ > 0 && (IsOut(previous_) || IsOut(value_))) {}

  /// The next drawing; false when there is none.
  bool Next(WrappingPass& pass) {
    if (state_ != State::First) return state_ != State::Done && NextMoved(pass);
    state_ = wraps_ ? State::Down : State::Done;
    pass = {previous_, value_, 2};
    return true;
  }

 private:
  enum class State { First, Down, Up, Done };
  bool IsOut(double value) const { return value > max_ || value < min_; }
  bool NextMoved(WrappingPass& pass);
  bool Move(double by, bool previousIsOut, bool valueIsOut, WrappingPass& pass);

  double previous_;
  double value_;
  double min_;
  double max_;
  double range_;
  int movesLeft_ = 1000;
  bool wraps_;
  State state_ = State::First;
};

}  // namespace velk
