#include "graphs/wrapping.h"

namespace velk {

WrappingPasses::WrappingPasses(float previous, float value, Scale scale, bool wrapping)
    : previous_(static_cast<double>(previous)),
      value_(static_cast<double>(value)),
      min_(static_cast<double>(scale.min)),
      max_(static_cast<double>(scale.max)),
      range_(max_ - min_),
      wraps_(wrapping && range_ > 0) {
}

bool WrappingPasses::Next(WrappingPass& pass) {
  if (state_ == State::First) {
    state_ = wraps_ ? State::Down : State::Done;
    pass = {previous_, value_, 2};
    return true;
  }
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
