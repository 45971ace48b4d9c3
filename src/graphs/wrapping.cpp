#include "graphs/wrapping.h"

namespace velk {

WrappingPasses::WrappingPasses(float previous, float value, Scale scale, bool wrapping)
    : previous_(previous), value_(value), scale_(scale), range_(scale.max - scale.min), wraps_(wrapping && range_ > 0) {
}

bool WrappingPasses::Next(WrappingPass& pass) {
  if (state_ == State::First) {
    state_ = wraps_ ? State::Down : State::Done;
    pass = {previous_, value_, 2};
    return true;
  }
  if (state_ == State::Down) {
    const bool previousIsOut = previous_ > scale_.max, valueIsOut = value_ > scale_.max;
    if (previousIsOut || valueIsOut) return Move(-range_, previousIsOut, valueIsOut, pass);
    state_ = State::Up;
  }
  if (state_ == State::Up) {
    const bool previousIsOut = previous_ < scale_.min, valueIsOut = value_ < scale_.min;
    if (previousIsOut || valueIsOut) return Move(range_, previousIsOut, valueIsOut, pass);
    state_ = State::Done;
  }
  return false;
}

bool WrappingPasses::Move(float by, bool previousIsOut, bool valueIsOut, WrappingPass& pass) {
  const float previous = previous_ + by, value = value_ + by;
  const bool stuck = (previousIsOut && previous == previous_) || (valueIsOut && value == value_);
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
