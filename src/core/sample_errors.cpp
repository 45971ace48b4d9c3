#include "core/sample_errors.h"

namespace velk {

namespace {

constexpr std::int64_t kRestMs = 10'000;

}  // namespace

bool SampleErrors::StaysAway(const Failure& failure) {
  const auto known = restsUntil_.find(KeyOf(failure));
  const bool rests = known != restsUntil_.end() && clock_.Ticks() < known->second;
  if (rests) Name(failure);
  return rests;
}

void SampleErrors::WasAnswered(const Failure& failure, Answer answer) {
  if (answer == Answer::Retry) return;
  restsUntil_[KeyOf(failure)] = clock_.Ticks() + kRestMs;
  Name(failure);
}

void SampleErrors::EndSample() {
  if (!failed_) session_.Data.failure = {};
}

std::string SampleErrors::KeyOf(const Failure& failure) const {
  return std::to_string(session_.Data.channel) + " " + failure.text.English();
}

void SampleErrors::Name(const Failure& failure) {
  failed_ = true;
  session_.Data.failure = failure.text;
  const auto channel = static_cast<std::size_t>(session_.Data.channel);
  if (channel > 0) session_.Data.failure += " (" + session_.CurrentParameters[channel].name + ")";
}

}  // namespace velk
