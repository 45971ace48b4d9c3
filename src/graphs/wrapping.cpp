#include "graphs/wrapping.h"

namespace velk {

bool WrappingPasses::NextMoved(WrappingPass& pass) {
  if (state_ == State::Down) {
    const bool previousIsOut = previous_ > max_, valueIsOut = value_ > max_;
    if (previousIsOut || valueIsOut) return Move(-range_, previousIsOut, valueIsOut, pass);
    state_ = State::Up;
  }
  if (state_ == State::Up) {
    const bool previousIsOut = previous_ < min_, valueIsOut = value_ < min_;
    if (previousIsOut || valueIsOut) return Move(range_, previousIsOut, valueIsOut, pass);
    state_ = State::Done;
  }
  return false;
}

bool WrappingPasses::Move(double by, bool previousIsOut, bool valueIsOut, WrappingPass& pass) {
  const double previous = previous_ + by, value = value_ + by;
  const auto same = [](double a, double b) { return static_cast<float>(a) == static_cast<float>(b); };
  const bool stuck = (previousIsOut && same(previous, previous_)) || (valueIsOut && same(value, value_));
  if (movesLeft_ == 0 || stuck) {
    state_ = State::Done;
    return false;
  }
  --movesLeft_;
  previous_ = previous;
  value_ = value;
  pass = {previous, value, 3};
  return true;
}

}  // namespace velk
