#include "settings/user_options.h"

#include <cmath>

#include "base/errors.h"
#include "base/numbers.h"
#include "settings/settings_keys.h"
#include "settings/texts.h"

namespace velk {

namespace {

constexpr double kMinFontSize = 6;
constexpr double kMaxFontSize = 20;

bool HoldsWholeBlockPairs(const UserOptions& options) {
  if (options.pixelslength <= 0 || options.pixeldivide <= 0) return false;
  if (options.MaximumTime <= 0 || options.MaximumTime > kMaxGraphHeight) return false;
  return std::fpclassify(std::fmod(options.MaximumTime, options.pixelslength * options.pixeldivide * 2)) == FP_ZERO;
}

}  // namespace

UserOptionTexts TextsOfUserOptions(const Session& session) {
  return {NumberText(session.pixelslength), NumberText(session.pixeldivide), NumberText(session.MaximumTime),
          std::to_string(session.intFontSize), std::to_string(kMaxParameters)};
}

std::variant<UserOptions, MessageText> CheckUserOptions(const UserOptionTexts& texts) {
  UserOptions options{std::trunc(Val(texts[0])), std::trunc(Val(texts[1])), std::trunc(Val(texts[2]))};
  if (!HoldsWholeBlockPairs(options)) return text::UnacceptableValues;
  const double fontSize = Val(texts[3]);
  if (fontSize < kMinFontSize) return text::MinimumFontSize;
  if (fontSize > kMaxFontSize) return text::MaximumFontSize;
  if (Val(texts[4]) < 1) return text::MinimumCurves;
  options.intFontSize = ToInt16(fontSize);
  return options;
}

void TakeUserOptions(Session& session, const UserOptions& options) {
  session.pixelslength = options.pixelslength;
  session.pixeldivide = options.pixeldivide;
  session.MaximumTime = options.MaximumTime;
  session.intFontSize = options.intFontSize;
}

}  // namespace velk
